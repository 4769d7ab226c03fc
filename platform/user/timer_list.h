// The timers of one thread, on the layer's clock. A timer that is due stays due until its message
// is taken, so any number of missed periods yields one message. For its thread only.
#pragma once

#include <windows.h>

#include <chrono>
#include <optional>
#include <vector>

#include "platform/user/message_filter.h"

namespace platform {

class TimerList {
 public:
  // Starts a timer of the window (null: of the thread), or restarts the one with the same
  // identifier. The period is limited to the documented range (10 ms to 0x7FFFFFFF ms).
  void Set(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC callback);

  // An identifier that no timer of the thread itself uses.
  UINT_PTR NewThreadTimerId();

  // False when there is no such timer.
  bool Kill(HWND window, UINT_PTR id);
  bool Exists(HWND window, UINT_PTR id) const;
  void KillAllOf(HWND window);

  // The message of the timer that passes the filter and has been due longest. `remove` starts its
  // next period.
  std::optional<MSG> Take(const MessageFilter& filter, bool remove);

  // The time until the next timer that passes the filter is due, zero when one is due already;
  // nothing when no timer passes.
  std::optional<std::chrono::milliseconds> UntilNext(const MessageFilter& filter) const;

 private:
  struct Timer {
    HWND window;
    UINT_PTR id;
    std::uint64_t period;
    std::uint64_t due;
    TIMERPROC callback;
  };
  std::vector<Timer>::iterator Locate(HWND window, UINT_PTR id);

  std::vector<Timer> timers_;
  UINT_PTR lastThreadTimerId_ = 0;
};

}  // namespace platform
