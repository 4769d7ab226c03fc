// The window and range of message numbers that GetMessageW and PeekMessageW are called with.
#pragma once

#include <windows.h>

namespace platform {

// The filter for messages of no window.
inline const HWND kNoWindow = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));

struct MessageFilter {
  HWND window = nullptr;  // null: all windows and the thread itself
  UINT first = 0;         // both zero: no limit
  UINT last = 0;

  bool PassesWindow(HWND candidate) const {
    if (window == kNoWindow) return candidate == nullptr;
    return window == nullptr || window == candidate;
  }
  // WM_QUIT passes in any range.
  bool PassesNumber(UINT message) const {
    const bool everyNumber = first == 0 && last == 0;
    return everyNumber || message == WM_QUIT || (message >= first && message <= last);
  }
  bool Passes(HWND candidate, UINT message) const {
    return PassesWindow(candidate) && PassesNumber(message);
  }
};

}  // namespace platform
