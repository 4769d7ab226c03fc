// For the benchmarks of windows: handles what waits for this thread, painting included.
#pragma once

#include <windows.h>

inline void PumpMessages() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    ::DispatchMessageW(&message);
}
