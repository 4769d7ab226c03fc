// The layer's clock, behind GetTickCount, GetLocalTime, Sleep, timed waits and timers. The system's
// own clock unless the simulated machine has put another in its place.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <ctime>
#include <mutex>

namespace platform {

class Clock {
 public:
  virtual ~Clock() = default;

  // Milliseconds since an arbitrary start; never goes backwards.
  virtual std::uint64_t TickMilliseconds() = 0;

  // The calendar time, with millisecond precision.
  virtual std::chrono::system_clock::time_point Now() = 0;

  // Blocks the calling thread for that long on this clock.
  virtual void Sleep(std::chrono::milliseconds duration) = 0;

  // How long a waiter may really block, at most, before it looks at this clock again, when it waits
  // for that long on it. A clock that does not say otherwise is looked at every few milliseconds.
  virtual std::chrono::milliseconds LongestBlock(std::chrono::milliseconds duration);

  // Waits until the condition is notified or that long has passed on this clock. May return early
  // for no reason at all, so the caller looks again at what it waits for and at the tick count.
  void WaitFor(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
               std::chrono::milliseconds duration);
};

Clock& CurrentClock();

// Puts another clock in place, or the system's own with null. The caller keeps the clock alive and
// no thread may be sleeping on the one it replaces.
void SetClock(Clock* clock);

// That moment in the time zone as it is now: the machine may have been moved to another one since
// the process started.
std::tm LocalFields(std::chrono::system_clock::time_point moment);

}  // namespace platform
