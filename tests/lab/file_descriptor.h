// Owns one file descriptor. Move-only; -1 means none.
#pragma once

#include <unistd.h>

#include <utility>

namespace lab {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~FileDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  int Get() const { return descriptor_; }
  bool IsValid() const { return descriptor_ >= 0; }

 private:
  int descriptor_ = -1;
};

}  // namespace lab
