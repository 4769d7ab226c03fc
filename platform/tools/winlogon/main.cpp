// winlogon, the process that notifies the registered packages of logons at the machine's seat. Runs
// until it is killed, which may happen at any time.
#include <windows.h>

#include <systemd/sd-daemon.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/account/session_watch.h"
#include "platform/tools/winlogon/logon_keeper.h"
#include "platform/tools/winlogon/notify_packages.h"

namespace {

using namespace platform;
using namespace platform::winlogon;

// Carries the seat's state to the main thread. While packages are told, a newer state replaces the
// one that waits.
class LatestSeat final : public SessionObserver {
 public:
  void OnSeat(const SeatState& state) override {
    const std::lock_guard lock(mutex_);
    state_ = state;
    arrived_.notify_one();
  }

  SeatState Await() {
    std::unique_lock lock(mutex_);
    arrived_.wait(lock, [this] { return state_.has_value(); });
    return *std::exchange(state_, std::nullopt);
  }

 private:
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::optional<SeatState> state_;
};

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  NotifyPackages packages;
  LogonKeeper keeper(
      BootId(), [&](LogonEvent event, const std::wstring& user) { packages.Notify(event, user); });
  keeper.Start();
  // What a crash has left is gone now, and services that read it may start.
  ::sd_notify(0, "READY=1");
  LatestSeat seat;
  const auto watch = WatchSessions(seat, SleepNotice::kNone);
  for (;;)
    keeper.Follow(seat.Await());
}
