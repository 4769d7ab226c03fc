// The layer's clock, behind GetTickCount, GetLocalTime, Sleep, timed waits and timers. It is the
// system's clock unless the simulated machine has set another one.
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

  // Milliseconds since an arbitrary start; monotonic.
  virtual std::uint64_t TickMilliseconds() = 0;

  // The calendar time, with millisecond precision.
  virtual std::chrono::system_clock::time_point Now() = 0;

  // Blocks the calling thread for that long on this clock.
  virtual void Sleep(std::chrono::milliseconds duration) = 0;

  // A thread waits for `duration` on this clock: the longest real time that it may block before it
  // reads this clock again. By default two milliseconds.
  virtual std::chrono::milliseconds LongestBlock(std::chrono::milliseconds duration);

  // Waits until the condition is notified or `duration` has passed on this clock. May return early,
  // so the caller checks again what it waits for, and the tick count.
  void WaitFor(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
               std::chrono::milliseconds duration);
};

Clock& CurrentClock();

// Sets another clock; null: the system's. The caller keeps the clock alive. No thread may be
// sleeping on the clock that is replaced.
void SetClock(Clock* clock);

// That moment in the machine's current time zone, which may have changed since the process started.
std::tm LocalFields(std::chrono::system_clock::time_point moment);

}  // namespace platform
