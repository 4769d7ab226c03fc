#include "platform/kernel/clock.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace platform {
namespace {

class SystemClock final : public Clock {
 public:
  std::uint64_t TickMilliseconds() override {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
  }
  std::chrono::system_clock::time_point Now() override { return std::chrono::system_clock::now(); }
  void Sleep(std::chrono::milliseconds duration) override { std::this_thread::sleep_for(duration); }
  std::chrono::milliseconds LongestBlock(std::chrono::milliseconds duration) override {
    return duration;
  }
};

std::atomic<Clock*> replacement = nullptr;

}  // namespace

std::chrono::milliseconds Clock::LongestBlock(std::chrono::milliseconds duration) {
  constexpr std::chrono::milliseconds kSlice{2};
  return std::min(duration, kSlice);
}

void Clock::WaitFor(std::condition_variable& condition, std::unique_lock<std::mutex>& lock,
                    std::chrono::milliseconds duration) {
  condition.wait_for(lock, LongestBlock(duration));
}

Clock& CurrentClock() {
  // Never destroyed: threads may still sleep when the process ends.
  static SystemClock& systemClock = *new SystemClock;
  Clock* other = replacement.load();
  return other != nullptr ? *other : systemClock;
}

void SetClock(Clock* clock) {
  replacement = clock;
}

std::tm LocalFields(std::chrono::system_clock::time_point moment) {
  const std::time_t stamp = std::chrono::system_clock::to_time_t(moment);
  std::tm fields{};
  ::tzset();  // localtime_r alone reads the time zone only once
  ::localtime_r(&stamp, &fields);
  return fields;
}

}  // namespace platform
