#include "platform/account/linux_sleep_clock.h"

#include <sys/timerfd.h>
#include <time.h>

#include <cstdint>
#include <limits>

namespace platform {
namespace {

// Both clocks are read one after the other; sleep takes longer than what lies between.
constexpr std::chrono::milliseconds kShortestSleep{100};

std::chrono::nanoseconds Read(clockid_t clock) {
  timespec now{};
  ::clock_gettime(clock, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

// The boot clock goes on while the machine sleeps, the monotonic one does not.
std::chrono::nanoseconds TimeAsleep() {
  return Read(CLOCK_BOOTTIME) - Read(CLOCK_MONOTONIC);
}

}  // namespace

// Never due; cancelled by every jump of the clock, and waking up is one.
SleepClock::SleepClock()
    : timer_(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)), slept_(TimeAsleep()) {
  itimerspec never{};
  never.it_value.tv_sec = std::numeric_limits<time_t>::max();
  const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
  if (::timerfd_settime(timer_.Get(), flags, &never, nullptr) != 0) timer_.Reset();
}

bool SleepClock::HasSlept() {
  std::uint64_t expirations = 0;
  static_cast<void>(!::read(timer_.Get(), &expirations, sizeof expirations));
  const std::chrono::nanoseconds before = slept_;
  slept_ = TimeAsleep();
  return slept_ - before >= kShortestSleep;
}

}  // namespace platform
