// Makes a 64-bit count of a 32-bit counter that wraps. The process has one for each direction,
// which all adapters share. Any thread.
#pragma once

#include <windows.h>

#include <cstdint>

#include "handles/critical_section.h"

namespace quillgate {

class CounterExtension {
 public:
  // The count for a counter that now reads `raw`. A reading below the one before is a wrap, and a
  // wrap counts 2^32 - 1.
  std::uint64_t Extend(DWORD raw);

 private:
  CriticalSection lock_;
  DWORD last_ = 0;
  std::uint64_t base_ = 0;
};

CounterExtension& SentBytesExtension();
CounterExtension& ReceivedBytesExtension();

}  // namespace quillgate
