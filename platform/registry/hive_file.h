// The file of a hive: read again when somebody has changed it, replaced as a whole when it is
// written, so that a crash leaves the old one or the new one. A file that cannot be understood is
// never overwritten. Not for several threads at once.
#pragma once

#include <sys/stat.h>
#include <windef.h>

#include <filesystem>

#include "platform/kernel/file_descriptor.h"
#include "platform/registry/hive_key.h"

namespace platform {

class HiveFile {
 public:
  // Lies in a folder of its own, which is made, with mode 0700, when it is missing.
  explicit HiveFile(std::filesystem::path path);

  const std::filesystem::path& Path() const { return path_; }

  // What the file holds now; an empty tree when there is no file. 0, or the error: among others
  // ERROR_REGISTRY_CORRUPT.
  DWORD Read(const HiveKey*& root);

  // Keeps the writers of other processes out until the descriptor is closed.
  DWORD LockForWriting(FileDescriptor& lock);

  // Replaces the file. Only under the lock, with a tree that was read under it.
  DWORD Write(HiveKey root);

  // Whether this process may write, as far as one can tell without trying.
  bool IsWritable() const;

 private:
  DWORD Load();
  void Remember(HiveKey root, FileDescriptor file);
  bool IsUnchanged() const;

  std::filesystem::path path_;
  HiveKey root_;
  // The file that was read last stays open, so that no other gets its number and looks the same.
  FileDescriptor file_;
  struct stat status_ {};
  bool known_ = false;       // root_ is what the file, or its absence, said
  bool complained_ = false;  // about a file that cannot be understood; once is enough
};

}  // namespace platform
