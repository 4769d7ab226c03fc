// Extends a 32-bit counter that wraps to a 64-bit count. The process has one extension for each
// direction, shared by all adapters. Any thread.
#pragma once

#include <windows.h>

#include <cstdint>

#include "handles/critical_section.h"

namespace quillgate {

class CounterExtension {
 public:
  // Returns the count for the counter's current value `raw`. A value below the previous one is a
  // wrap, and a wrap counts 2^32 - 1. Deliberate, see docs/behaviour.md.
  std::uint64_t Extend(DWORD raw);

 private:
  CriticalSection lock_;
  DWORD last_ = 0;
  std::uint64_t base_ = 0;
};

CounterExtension& SentBytesExtension();
CounterExtension& ReceivedBytesExtension();

}  // namespace quillgate
