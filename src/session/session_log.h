// The session object: opens and closes the gate for the user who is logged on, measures and logs
// the session, and enforces the rules. The process has one, made by service/ on the service main
// thread and destroyed at process exit. Every operation may be called on any thread; none waits for
// a person.
//
// What is decided, measured and shown is under one lock, which nobody holds while the database is
// asked: a file that is in use takes seconds to answer, and closing does not wait for it. One
// operation at a time asks the database. Order: the database's turn, then the lock.
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "gate/ip_filter_hook.h"
#include "session/access_rules.h"
#include "session/connection_log.h"
#include "session/gate_indicator.h"
#include "session/limit_warnings.h"
#include "session/session_meter.h"
#include "session/session_rests.h"

namespace quillgate {

// What the session object works with; all of it outlives the session object.
struct SessionSurroundings {
  Database& database;
  Settings& settings;
  const MessageCatalogue& catalogue;
  const WeekCalendar& calendar;
  const LogonSession& logon;
  GateIndicator& indicator;
};

// The running session at one moment; nothing but zeros while there is none.
struct SessionReading {
  bool online = false;
  std::uint64_t seconds = 0;
  std::uint64_t bytesReceived = 0;
  std::uint64_t bytesSent = 0;
};

class SessionLog final : public SessionControl {
 public:
  // Brings the drivers up and, when they came up, opens the gate; chooses the adapter to measure.
  explicit SessionLog(const SessionSurroundings& surroundings);
  // Opens the gate, for the computer is never left blocked by a service that ends in order, then
  // brings the drivers down. Needs no database.
  ~SessionLog() override;
  SessionLog(const SessionLog&) = delete;
  SessionLog& operator=(const SessionLog&) = delete;

  // --- gate ---
  // Opens the gate and starts a session, also when the gate is open. Without a driver only the
  // program's own state and the icon change.
  void Enable();
  // Closes the gate and ends the measuring. Local traffic passes if the settings say exactly "YES";
  // while the database does not answer, they say what they said last.
  void Disable();
  bool IsOnline() const;
  bool IsHookAvailable() const;
  // Why the hook is not available; 0 when it is.
  DWORD HookError() const;
  // For a process that ends though one of its threads does not: what the destructor does at the
  // gate. Nothing can be decided afterwards.
  void OpenForGood();

  // --- measuring; see SessionMeter ---
  std::uint32_t SecondsOnline() const;
  std::uint64_t BytesReceived() const;
  std::uint64_t BytesSent() const;
  DATE StartDate() const;
  // The gate and the session's counters, all of one moment.
  SessionReading Reading() const;
  void SetAdapter(std::wstring serviceName);
  // The adapter that the settings name.
  void ReloadAdapter();

  // --- log; each throws DBerror ---
  // Closes the gate, writes the session to ConnLog and empties CrashLog. The gate stays closed
  // until the next Reevaluate.
  void EndSession() override;
  // Mirrors the session of the user who is logged on in CrashLog.
  void SnapshotSession();
  // Moves what a crash left in CrashLog to ConnLog.
  void RecoverSessions();

  // --- rules; see AccessRules ---
  AccessReason CheckAccess(bool refresh);
  std::wstring ReasonText(AccessReason reason) const;
  std::uint64_t TimeLeft() const;
  std::uint64_t BytesLeft() const;

  // --- enforcement; both throw DBerror ---
  // Switches the gate by the rules, gives the warnings, mirrors the session. A gate that must close
  // is closed whatever the database does, and one that is closed is told so again.
  void RunEnforcementCycle();
  // After a logon or a change of users: opens the gate, which starts a session, or closes it.
  void Reevaluate() override;

 private:
  // With the lock held. Judge: the user who is logged on, as that user is now.
  AccessReason Judge() const;
  void OpenGate();
  void CloseGate();
  void EndMeasuredSession();
  void EndMeasuring();

  // The steps of a cycle. RefreshDueTotals: what it failed with, for the gate is judged before that
  // is told. SwitchGate: whether the gate was closed and has left a session to be written.
  void AssertClosedGate();
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
  CriticalSection databaseTurn_;
  mutable CriticalSection lock_;
  IpFilterHook hook_;
  SessionMeter meter_;
  SessionRests rests_;
  ConnectionLog log_;
  AccessRules rules_;
  LimitWarnings warnings_;
  // Between a log-off and the next decision about a user, when the gate must not open by itself.
  bool sessionEnded_ = false;
  // What the settings said last.
  std::atomic<bool> localAllowed_{false};
};

}  // namespace quillgate
