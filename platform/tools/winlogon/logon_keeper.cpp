#include "platform/tools/winlogon/logon_keeper.h"

#include <utility>

namespace platform::winlogon {

LogonKeeper::LogonKeeper(std::wstring bootId, Notify notify)
    : record_(std::move(bootId)), notify_(std::move(notify)) {}

void LogonKeeper::Start() {
  if (auto recorded = record_.Read()) {
    current_ = *std::move(recorded);
    return;
  }
  notify_(LogonEvent::kStartup, {});
  Store({});
}

void LogonKeeper::Follow(const SeatState& seat) {
  ConsoleUser next;
  if (const SeatSession* const active = seat.Active()) next = {active->id, active->user};
  if (next == current_) return;
  const bool isSame = next.sessionId == current_.sessionId && next.name == current_.name;
  if (!isSame && !current_.sessionId.empty()) {
    // After a kill in it a user who has come back is told again: the name may be gone already.
    Store({current_.sessionId, current_.name, false});
    notify_(LogonEvent::kLogoff, current_.name);
    Store({});
  }
  if (next.sessionId.empty()) return;
  Store({next.sessionId, next.name, false});
  notify_(LogonEvent::kLogon, next.name);
  Store(std::move(next));
}

void LogonKeeper::Store(ConsoleUser user) {
  current_ = std::move(user);
  record_.Write(current_);
}

}  // namespace platform::winlogon
