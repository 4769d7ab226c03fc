// The current user: one user of the current logon system, or none. The process has one
// LogonSession, created by service/.
//
// A logon may need a prompt (the QUILLGATE system, and the NONE system's override). Rules:
// - Every operation may be called on any thread. Only a LogOn that opens a prompt waits for input.
// - Decisions are serialised by the decision lock, and each is atomic: a session ended, a user set,
//   the gate switched. No lock is held while a prompt is open.
// - Operations take effect at once also while a prompt is open: a log-off, a logon without a
//   prompt, new users. The prompt stays open and its result then counts as usual.
// - One prompt is open at a time. Another logon that would need one meanwhile counts as cancelled.
// - A cancelled prompt does not affect a user who has logged on meanwhile. Neither does the result
//   of a prompt whose logon system is not the current one when it returns.
// Lock order: the decision lock, the session object's lock, the lock around the current user. The
// session object may therefore query the current user under any lock. Changing a user is not a
// decision and takes none of these locks; the session object sees it at its next access check.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/user_collection.h"
#include "storage/settings.h"

namespace quillgate {

// The users that may log on, as of each call: they may change while a prompt is open. Any thread.
class LogonCandidates {
 public:
  virtual ~LogonCandidates() = default;

  // In the order of the list that is shown.
  virtual std::vector<std::wstring> Names() const = 0;
  // Whether the user exists and the password is correct.
  virtual bool Accepts(std::wstring_view name, std::wstring_view password) const = 0;
};

// The dialogs of a logon. Each is modal and returns nullopt when it was cancelled or when no dialog
// can be shown.
class LogonPrompts {
 public:
  virtual ~LogonPrompts() = default;

  // The name that was accepted with its password. Under the NONE system the dialog requests only
  // the override password.
  virtual std::optional<std::wstring> AskLogon(LogonSystem system,
                                               const LogonCandidates& candidates) = 0;

  // The name of the first user of the QUILLGATE system, possibly empty; see IsStorableUserName.
  virtual std::optional<std::wstring> AskFirstUserName() = 0;

  // Reports that the first user was created, with a blank password.
  virtual void NotifyFirstUserMade() = 0;
};

// The user who is logged on to Windows; empty when unknown.
class WindowsIdentity {
 public:
  virtual ~WindowsIdentity() = default;
  virtual std::wstring UserName() = 0;
};

// The effect of a logon and a log-off on the connection. Implemented by the session object.
class SessionControl {
 public:
  virtual ~SessionControl() = default;
  virtual void Reevaluate() = 0;
  virtual void EndSession() = 0;
};

class LogonSession final : private LogonCandidates {
 public:
  LogonSession(Settings& settings, WindowsIdentity& identity);

  // The prompts, and the object to notify of logons and log-offs. Null: none; every prompt then
  // counts as cancelled. The caller keeps the objects alive until it replaces them here, and
  // replaces the prompts only while none is open.
  void SetPrompts(LogonPrompts* prompts);
  void SetSessionControl(SessionControl* session);
  // The users that may log on; null: none.
  void SetUsers(std::shared_ptr<UserCollection> users);
  std::shared_ptr<UserCollection> Users() const;

  // The names of the users that may log on, in ascending order of character codes.
  std::vector<std::wstring> Names() const override;

  bool IsLoggedOn() const;
  // The current user's record as it is now in the collection; null when no user is logged on. One
  // value is one state of the user's rules, so an access check takes it once.
  std::shared_ptr<const User> CurrentUser() const;

  // An empty name is an ordinary logon; "Admin" and "User" are the override commands of the NONE
  // system. First ends the session of the current user. Returns whether a user is logged on
  // afterwards. A DBerror of the session is passed to the caller.
  bool LogOn(std::wstring_view name);

  // As LogOn, for callers that must not wait for input. False when a prompt would be needed;
  // nothing is changed then.
  bool LogOnWithoutAsking(std::wstring_view name);

  // Logs on the user of that name without any password, as nobody else may than an administrator
  // who has just chosen the logon system. Whether there is such a user.
  bool LogOnAs(std::wstring_view name);

  // Ends the connection session, then no user is logged on, also when the end of the session threw.
  // The flag has no effect.
  void LogOff(int flag);

  // After SetUsers or a reload of the users: looks up the current user by name again; no user is
  // logged on when that name does not exist. Other changes of users need no call.
  void RefreshCurrentUser();

  // No decision runs while a caller holds it: for replacing several of the objects that decisions
  // use.
  CriticalSection& DecisionLock() { return decision_; }

 private:
  class OpenQuestion;

  // Whether a logon with that name needs a prompt. Requires the decision lock.
  bool Asks(LogonSystem system, std::wstring_view name) const;

  bool Accepts(std::wstring_view name, std::wstring_view password) const override;

  // The logon system in the settings, or as last read when they cannot be read. Requires the
  // decision lock.
  LogonSystem System() const;
  void SetCurrent(std::shared_ptr<const UserEntry> user);

  // Opens the prompt of that system; creates the first user before if necessary. No lock is held.
  std::optional<std::wstring> Ask(LogonPrompts& prompts, LogonSystem system);
  // False when the prompt was cancelled, or when there is still no user.
  bool MakeFirstUser(LogonPrompts& prompts);
  // False when a user exists already, or when the new one cannot be stored.
  bool StoreFirstUser(std::wstring name);

  // Requires the decision lock. No name: there was no prompt, or it was cancelled.
  bool Decide(LogonSystem system, const std::optional<std::wstring>& acceptedName);
  std::shared_ptr<const UserEntry> FindLogonUser(
      LogonSystem system, const std::optional<std::wstring>& acceptedName) const;

  Settings& settings_;
  WindowsIdentity& identity_;

  mutable CriticalSection decision_;
  LogonPrompts* prompts_ = nullptr;
  SessionControl* session_ = nullptr;
  bool asking_ = false;
  mutable std::optional<LogonSystem> latestSystem_;

  mutable CriticalSection lock_;
  std::shared_ptr<UserCollection> users_;
  std::shared_ptr<const UserEntry> current_;
};

}  // namespace quillgate
