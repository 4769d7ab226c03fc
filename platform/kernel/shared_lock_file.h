// A lock that several processes know by name: a file of two bytes under the root folder with byte
// locks of the kernel, which end with the process whatever becomes of it. The first byte is held
// shared by everybody who has the lock open, the second exclusively by its owner, who also writes
// there that it is owned, so that the next owner knows when an owner died. Not for several threads
// at once: one object for each process and name.
#pragma once

#include <windef.h>

#include <filesystem>
#include <memory>

#include "platform/kernel/file_descriptor.h"

namespace platform {

class SharedLockFile {
 public:
  enum class Taken { kYes, kAbandoned, kNo, kFailed };

  // Makes the file when it is missing; `existed` tells whether somebody has it open already. When
  // nobody has and `takeIt` is set, the lock is owned on return. Null with `error` set on failure.
  static std::unique_ptr<SharedLockFile> Open(const std::filesystem::path& path, bool takeIt,
                                              bool& existed, DWORD& error);

  // Takes the lock if nobody has it.
  Taken TryTake();
  void GiveBack();
  // Gives it back, but the next owner is told that this one died.
  void Abandon();

 private:
  explicit SharedLockFile(FileDescriptor file) : file_(std::move(file)) {}

  FileDescriptor file_;
};

}  // namespace platform
