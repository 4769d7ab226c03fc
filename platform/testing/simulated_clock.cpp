#include "platform/testing/simulated_clock.h"

namespace platform {

void SimulatedClock::SetLocalTime(int year, int month, int day, int hour, int minute, int second) {
  std::tm fields{};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = hour;
  fields.tm_min = minute;
  fields.tm_sec = second;
  fields.tm_isdst = -1;
  const std::lock_guard lock(mutex_);
  now_ = std::chrono::system_clock::from_time_t(std::mktime(&fields));
}

void SimulatedClock::SetTickMilliseconds(std::uint64_t ticks) {
  const std::lock_guard lock(mutex_);
  ticks_ = ticks;
}

void SimulatedClock::Advance(std::chrono::milliseconds duration) {
  const std::lock_guard lock(mutex_);
  ticks_ += static_cast<std::uint64_t>(duration.count());
  now_ += duration;
  changed_.notify_all();
}

void SimulatedClock::HoldSleepers() {
  const std::lock_guard lock(mutex_);
  holding_ = true;
}

bool SimulatedClock::AwaitSleepers(int count) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, std::chrono::seconds(10), [&] { return sleepers_ >= count; });
}

void SimulatedClock::Release() {
  const std::lock_guard lock(mutex_);
  released_ = true;
  changed_.notify_all();
}

std::chrono::milliseconds SimulatedClock::TotalSlept() {
  const std::lock_guard lock(mutex_);
  return slept_;
}

std::uint64_t SimulatedClock::TickMilliseconds() {
  const std::lock_guard lock(mutex_);
  return ticks_;
}

std::chrono::system_clock::time_point SimulatedClock::Now() {
  const std::lock_guard lock(mutex_);
  return now_;
}

void SimulatedClock::Sleep(std::chrono::milliseconds duration) {
  std::unique_lock lock(mutex_);
  slept_ += duration;
  if (!holding_) {
    ticks_ += static_cast<std::uint64_t>(duration.count());
    now_ += duration;
    return;
  }
  const std::uint64_t due = ticks_ + static_cast<std::uint64_t>(duration.count());
  ++sleepers_;
  changed_.notify_all();
  changed_.wait(lock, [&] { return released_ || ticks_ >= due; });
  --sleepers_;
}

}  // namespace platform
