// A clock for tests. By default Sleep advances the clock and returns at once, for tests with one
// thread. After HoldSleepers only the test advances it, and sleeping threads wait. Any thread.
#pragma once

#include <condition_variable>
#include <mutex>

#include "platform/kernel/clock.h"

namespace platform {

class SimulatedClock final : public Clock {
 public:
  // Sets the local time (the zone is UTC on the simulated machine); the tick count is unchanged.
  void SetLocalTime(int year, int month, int day, int hour, int minute, int second);
  void SetTickMilliseconds(std::uint64_t ticks);

  // Advances local time and tick count, and wakes the threads whose sleep has elapsed.
  void Advance(std::chrono::milliseconds duration);

  // From now on Sleep waits until the clock has been advanced far enough. By default it advances
  // the clock by its duration and returns at once.
  void HoldSleepers();

  // Waits until that many threads sleep on this clock; false after 10 s of real time.
  bool AwaitSleepers(int count);

  // Wakes every sleeping thread, now and in future, without advancing the clock.
  void Release();

  // The sum of all sleeps of all threads.
  std::chrono::milliseconds TotalSlept();

  std::uint64_t TickMilliseconds() override;
  std::chrono::system_clock::time_point Now() override;
  void Sleep(std::chrono::milliseconds duration) override;

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t ticks_ = 1'000'000;
  std::chrono::system_clock::time_point now_{};
  std::chrono::milliseconds slept_{0};
  bool holding_ = false;
  bool released_ = false;
  int sleepers_ = 0;
};

}  // namespace platform
