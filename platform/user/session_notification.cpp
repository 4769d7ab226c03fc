#include "platform/user/session_notification.h"

#include <wtsapi32.h>

#include <map>
#include <mutex>
#include <optional>
#include <ranges>
#include <string>

#include "platform/account/session_watch.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/power_broadcast.h"
#include "platform/user/window.h"

namespace platform {
namespace {

class SessionNotifier final : public SessionObserver {
 public:
  void Register(HWND window);
  // Ends one registration of the window, or all of them; false when there is none.
  bool Unregister(HWND window, bool all);

  void OnSeat(const SeatState& state) override;
  void OnSuspend(const std::stop_token& ended) override;
  void OnResume(bool announced) override;

 private:
  void Notify(const SeatChange& change);

  std::mutex watching_;  // guards watch_, is held while it starts and ends
  std::unique_ptr<SessionWatch> watch_;

  std::mutex mutex_;  // guards the rest
  std::map<HWND, unsigned> registrations_;
  std::optional<SeatState> seat_;            // nothing until it is known
  std::map<std::wstring, LPARAM> sessions_;  // numbers of the sessions by identifier
  LPARAM latestNumber_ = 0;
};

void SessionNotifier::Register(HWND window) {
  const std::lock_guard watching(watching_);
  if (watch_ == nullptr) watch_ = WatchSessions(*this, SleepNotice::kBeforeAndAfter);
  const std::lock_guard lock(mutex_);
  ++registrations_[window];
}

bool SessionNotifier::Unregister(HWND window, bool all) {
  const std::lock_guard watching(watching_);
  std::unique_lock lock(mutex_);
  const auto found = registrations_.find(window);
  if (found == registrations_.end()) return false;
  if (all || --found->second == 0) registrations_.erase(found);
  if (!registrations_.empty()) return true;
  // Without the mutex: the end of the watch waits for a call that may need it.
  lock.unlock();
  watch_.reset();
  lock.lock();
  seat_.reset();
  return true;
}

// The first state is where the changes begin.
void SessionNotifier::OnSeat(const SeatState& state) {
  const std::lock_guard lock(mutex_);
  if (seat_.has_value()) {
    for (const SeatChange& change : ChangesBetween(*seat_, state))
      Notify(change);
  }
  std::erase_if(sessions_, [&](const auto& each) { return state.Find(each.first) == nullptr; });
  seat_ = state;
}

// A session has one number in all messages about it.
void SessionNotifier::Notify(const SeatChange& change) {
  const auto [session, isNew] = sessions_.try_emplace(change.sessionId, latestNumber_ + 1);
  if (isNew) ++latestNumber_;
  for (const HWND window : std::views::keys(registrations_))
    ::PostMessageW(window, WM_WTSSESSION_CHANGE, change.reason, session->second);
}

void SessionNotifier::OnSuspend(const std::stop_token& ended) {
  BroadcastPowerEvents({PBT_APMQUERYSUSPEND, PBT_APMSUSPEND})->Await(ended);
}

void SessionNotifier::OnResume(bool announced) {
  BroadcastPowerEvents({announced ? PBT_APMRESUMESUSPEND : PBT_APMRESUMECRITICAL});
}

SessionNotifier& Notifier() {
  static SessionNotifier& notifier = *new SessionNotifier;
  return notifier;
}

}  // namespace

ExportTable SessionNotificationExports() {
  return {{"WTSRegisterSessionNotification",
           reinterpret_cast<FARPROC>(::WTSRegisterSessionNotification)},
          {"WTSUnRegisterSessionNotification",
           reinterpret_cast<FARPROC>(::WTSUnRegisterSessionNotification)}};
}

void ForgetSessionNotifications(HWND window) {
  Notifier().Unregister(window, true);
}

}  // namespace platform

using namespace platform;

BOOL WINAPI WTSRegisterSessionNotification(HWND window, DWORD flags) try {
  if (flags != NOTIFY_FOR_ALL_SESSIONS) {
    LogLine("WTSRegisterSessionNotification: only NOTIFY_FOR_ALL_SESSIONS is supported");
    return BoolResult(ERROR_INVALID_PARAMETER);
  }
  if (FindWindowOf(window) == nullptr) return FALSE;
  Notifier().Register(window);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI WTSUnRegisterSessionNotification(HWND window) try {
  if (FindWindowOf(window) == nullptr) return FALSE;
  return BoolResult(Notifier().Unregister(window, false) ? NO_ERROR : ERROR_INVALID_PARAMETER);
} catch (...) {
  return FailedCall(FALSE);
}
