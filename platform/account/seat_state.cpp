#include "platform/account/seat_state.h"

#include <algorithm>

namespace platform {
namespace {

// Adds the reason for each session of one state that the other one lacks.
void AddMissing(const SeatState& state, const SeatState& other, DWORD reason,
                std::vector<SeatChange>& changes) {
  for (const SeatSession& each : state.sessions) {
    if (other.Find(each.id) == nullptr) changes.push_back({reason, each.id});
  }
}

}  // namespace

const SeatSession* SeatState::Find(const std::wstring& id) const {
  const auto found = std::ranges::find(sessions, id, &SeatSession::id);
  return found != sessions.end() ? &*found : nullptr;
}

std::vector<SeatChange> ChangesBetween(const SeatState& before, const SeatState& after) {
  std::vector<SeatChange> changes;
  AddMissing(before, after, WTS_SESSION_LOGOFF, changes);
  if (before.activeId != after.activeId) {
    if (!before.activeId.empty()) changes.push_back({WTS_CONSOLE_DISCONNECT, before.activeId});
    if (!after.activeId.empty()) changes.push_back({WTS_CONSOLE_CONNECT, after.activeId});
  }
  AddMissing(after, before, WTS_SESSION_LOGON, changes);
  for (const SeatSession& each : after.sessions) {
    const SeatSession* const earlier = before.Find(each.id);
    if (earlier == nullptr || earlier->locked == each.locked) continue;
    changes.push_back({each.locked ? WTS_SESSION_LOCK : WTS_SESSION_UNLOCK, each.id});
  }
  return changes;
}

}  // namespace platform
