// The file of a hive. It is read again when another process has changed it. A write replaces the
// whole file, so that a crash leaves the old one or the new one. A damaged file is never
// overwritten. One thread at a time.
#pragma once

#include <sys/stat.h>
#include <windef.h>

#include <filesystem>

#include "platform/kernel/file_descriptor.h"
#include "platform/registry/hive_key.h"

namespace platform {

class HiveFile {
 public:
  // The path's folder is for the hive alone; it is created with mode 0700 when it is missing.
  explicit HiveFile(std::filesystem::path path);

  const std::filesystem::path& Path() const { return path_; }

  // The current content of the file; an empty tree when there is no file. Valid until the next call
  // of Read or Write. 0, or an error: among others ERROR_REGISTRY_CORRUPT.
  DWORD Read(const HiveKey*& root);

  // Takes the lock between writers, waiting for another process. Held until the descriptor is
  // closed.
  DWORD LockForWriting(FileDescriptor& lock);

  // Replaces the file. The caller holds the lock and has read the tree under it.
  DWORD Write(HiveKey root);

  // Whether this process has write access to the folder.
  bool IsWritable() const;

 private:
  DWORD Load();
  void Remember(HiveKey root, FileDescriptor file);
  bool IsUnchanged() const;

  std::filesystem::path path_;
  HiveKey root_;
  // The file that was read last stays open, so that no other file gets its inode number.
  FileDescriptor file_;
  struct stat status_ {};
  bool loaded_ = false;       // root_ is the content of the file, or empty as there is none
  bool errorLogged_ = false;  // a damaged file is logged once
};

}  // namespace platform
