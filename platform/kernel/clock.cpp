#include "platform/kernel/clock.h"

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
};

std::atomic<Clock*> replacement = nullptr;

}  // namespace

Clock& CurrentClock() {
  static SystemClock systemClock;
  Clock* other = replacement.load();
  return other != nullptr ? *other : systemClock;
}

void SetClock(Clock* clock) {
  replacement = clock;
}

}  // namespace platform
