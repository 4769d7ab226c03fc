// The session object: opens and closes the gate for the current user, measures and logs the
// session, and enforces the rules. The process has one, created by service/ on the service main
// thread and destroyed at process exit. Every operation may be called on any thread; none waits for
// input.
//
// All state is protected by lock_, which is not held during database access: a file that is in use
// delays a statement for seconds, and closing the gate does not wait for it. Reading totals and
// writing the log are serialised by databaseTurn_. Lock order: databaseTurn_, lock_.
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "gate/ip_filter_hook.h"
#include "session/access_rules.h"
#include "session/connection_log.h"
#include "session/gate_indicator.h"
#include "session/limit_warnings.h"
#include "session/session_events.h"
#include "session/session_meter.h"
#include "session/session_rests.h"

namespace quillgate {

// The objects that the session object uses; all of them outlive it.
struct SessionSurroundings {
  Database& database;
  Settings& settings;
  const MessageCatalogue& catalogue;
  const WeekCalendar& calendar;
  const LogonSession& logon;
  GateIndicator& indicator;
  SessionEvents* events = nullptr;  // null: nobody is told
};

// The running session at one moment; all values are 0 while there is none.
struct SessionReading {
  bool online = false;
  std::uint64_t seconds = 0;
  std::uint64_t bytesReceived = 0;
  std::uint64_t bytesSent = 0;
};

class SessionLog final : public SessionControl {
 public:
  // Starts the drivers and, when they have started, opens the gate; chooses the adapter to measure.
  explicit SessionLog(const SessionSurroundings& surroundings);
  // Opens the gate, so that a service that stops in order never leaves the computer blocked, then
  // stops the drivers. Does not use the database.
  ~SessionLog() override;
  SessionLog(const SessionLog&) = delete;
  SessionLog& operator=(const SessionLog&) = delete;

  // --- gate ---
  // Opens the gate and starts a session, also when the gate is open already. Without a driver, only
  // the program's own state and the icon change.
  void Enable();
  // Closes the gate and stops measuring. Local traffic passes if the setting is exactly "YES";
  // while the database is not available, the value last read applies.
  void Disable();
  bool IsOnline() const;
  bool IsHookAvailable() const;
  // The reason why the hook is not available; 0 when it is.
  DWORD HookError() const;
  // For a process that exits although one of its threads hangs: does to the gate what the
  // destructor does. No operation may be called afterwards.
  void OpenForGood();

  // --- measuring; see SessionMeter ---
  std::uint32_t SecondsOnline() const;
  std::uint64_t BytesReceived() const;
  std::uint64_t BytesSent() const;
  DATE StartDate() const;
  // The gate and the session's counters at one moment.
  SessionReading Reading() const;
  void SetAdapter(std::wstring serviceName);
  // Measures the adapter named in the settings.
  void ReloadAdapter();

  // --- log; each throws DBerror ---
  // Closes the gate, writes the session to ConnLog and empties CrashLog. The gate stays closed
  // until the next Reevaluate.
  void EndSession() override;
  // Writes the snapshot of the current user's session to CrashLog.
  void SnapshotSession();
  // Moves the rows that a crash left in CrashLog to ConnLog.
  void RecoverSessions();

  // The warnings of the running session may be given again: a threshold or a limit has changed.
  void ClearWarnings();

  // --- rules; see AccessRules ---
  AccessReason CheckAccess(bool refresh);
  std::wstring ReasonText(AccessReason reason) const;
  std::uint64_t TimeLeft() const;
  std::uint64_t BytesLeft() const;

  // --- enforcement; both throw DBerror ---
  // Switches the gate by the rules, shows the warnings, writes the snapshot. A gate that must close
  // is closed even when the database fails. For a gate that is as it must be, its code is sent
  // again.
  void RunEnforcementCycle();
  // After a logon or a change of users: opens the gate, which starts a session, or closes it.
  void Reevaluate() override;

 private:
  // Require the lock. Judge: the access of the current user, by the user's record as it is now.
  AccessReason Judge() const;
  void OpenGate();
  void BeginSession();
  void CloseGate();
  void EndMeasuredSession(AccessReason reason);
  void EndMeasuring();

  // The steps of a cycle. A failure of RefreshDueTotals is reported only after SwitchGate.
  // SwitchGate returns whether it closed the gate and left a session to be written.
  void AssertGate();
  bool MustKnowTotals() const;
  void RefreshDueTotals();
  bool SwitchGate();

  // Each may wait for the database; the lock must not be held.
  void NoteLocalPolicy();
  void RefreshTotals();
  void Write(const std::function<ConnectionLog::Batch()>& due);
  void WriteFinished();
  void WriteClosedSession();
  void GiveWarnings();

  void ShowGate(GateIcon icon, MessageId state);
  void NotifyDisabled(const std::wstring& reasonText);

  Settings& settings_;
  const MessageCatalogue& catalogue_;
  const LogonSession& logon_;
  GateIndicator& indicator_;
  SessionEvents* const events_;
  CriticalSection databaseTurn_;
  mutable CriticalSection lock_;
  IpFilterHook hook_;
  SessionMeter meter_;
  SessionRests rests_;
  ConnectionLog log_;
  AccessRules rules_;
  LimitWarnings warnings_;
  // Set from a log-off to the next decision about a user: the gate must not open by itself.
  bool sessionEnded_ = false;
  // The value last read from the settings.
  std::atomic<bool> localAllowed_{false};
};

}  // namespace quillgate
