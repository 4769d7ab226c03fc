// Whether the machine has slept, from the kernel's clocks: also when nobody has announced it. For
// one thread.
#pragma once

#include <chrono>

#include "platform/kernel/file_descriptor.h"

namespace platform {

class SleepClock {
 public:
  SleepClock();

  // Becomes readable when the machine has awoken, and when its clock has been set. -1 when the
  // kernel gives no such descriptor.
  int Descriptor() const { return timer_.Get(); }
  // Whether the machine has slept since the last call, or since the clock was made.
  bool HasSlept();

 private:
  FileDescriptor timer_;
  std::chrono::nanoseconds slept_;
};

}  // namespace platform
