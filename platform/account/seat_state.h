// The user sessions at the machine's own seat (seat0), and which of them is on its screen. A value.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace platform {

struct SeatSession {
  std::wstring id;    // not used again while logind runs
  std::wstring user;  // the account's name, without a domain
  bool locked = false;

  bool operator==(const SeatSession&) const = default;
};

struct SeatState {
  std::vector<SeatSession> sessions;
  std::wstring activeId;  // empty: nobody's session is on the screen, as while a greeter is shown

  bool operator==(const SeatState&) const = default;
  // The session of that identifier; null when there is none.
  const SeatSession* Find(const std::wstring& id) const;
  // The session on the screen; null when there is none.
  const SeatSession* Active() const { return Find(activeId); }
};

struct SeatChange {
  DWORD reason;  // of WM_WTSSESSION_CHANGE
  std::wstring sessionId;

  bool operator==(const SeatChange&) const = default;
};

// What has happened from one state to the next, in the order in which windows are notified: who has
// logged off, the screen's change, who has logged on, then locks.
std::vector<SeatChange> ChangesBetween(const SeatState& before, const SeatState& after);

}  // namespace platform
