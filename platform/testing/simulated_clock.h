// A clock that moves only when a test moves it. Sleepers wait for it, or, in the mode for tests of
// one thread, move it themselves.
#pragma once

#include <condition_variable>
#include <mutex>

#include "platform/kernel/clock.h"

namespace platform {

class SimulatedClock final : public Clock {
 public:
  // Local time (the zone is UTC on the simulated machine); the tick count is not touched.
  void SetLocalTime(int year, int month, int day, int hour, int minute, int second);
  void SetTickMilliseconds(std::uint64_t ticks);

  // Moves both times on and wakes the sleepers whose time has come.
  void Advance(std::chrono::milliseconds duration);

  // From now on a sleeper waits until the clock has been moved far enough. Before, and by default,
  // a sleeper moves the clock by its own sleep and returns at once.
  void HoldSleepers();

  // Waits (really, 10 s at most) until that many threads sleep on this clock; false if they do not.
  bool AwaitSleepers(int count);

  // Lets every sleeper go, now and in future, without moving the clock further.
  void Release();

  // What has been slept in all, by every thread.
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
