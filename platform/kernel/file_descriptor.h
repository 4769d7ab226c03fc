// Owns a Linux file descriptor and closes it; move-only.
#pragma once

#include <unistd.h>

#include <utility>

namespace platform {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.Release()) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  ~FileDescriptor() { Reset(); }

  int Get() const { return descriptor_; }
  bool IsOpen() const { return descriptor_ >= 0; }
  int Release() { return std::exchange(descriptor_, -1); }
  void Reset(int descriptor = -1) {
    const int old = std::exchange(descriptor_, descriptor);
    if (old >= 0) ::close(old);
  }

 private:
  int descriptor_ = -1;
};

}  // namespace platform
