// Moveable memory: blocks behind handles, in which programs pass data to the system. Any thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "platform/kernel/handle_table.h"

namespace platform {

class GlobalBlock final : public Object {
 public:
  explicit GlobalBlock(std::size_t bytes) : bytes_(bytes) {}

  std::span<std::byte> Bytes() { return bytes_; }
  void Lock() { ++locks_; }
  // Returns how many locks there were, 0 without one to take back.
  unsigned Unlock();

 private:
  std::vector<std::byte> bytes_;
  std::atomic<unsigned> locks_ = 0;
};

// The block of a live handle; null, with ERROR_INVALID_HANDLE as the last error, for any other.
std::shared_ptr<GlobalBlock> FindGlobalBlock(HGLOBAL handle);

}  // namespace platform
