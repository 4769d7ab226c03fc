// Who is logged on: one user of the current logon system, or nobody. The process has one
// LogonSession, made by service/.
//
// A logon may have to ask a person (the QUILLGATE system, and the NONE system's override). Rules:
// - Every operation may be called on any thread, and only a LogOn that asks waits for a person.
// - Decisions are made one at a time, each as a whole: a session ended, a user chosen, the gate
//   switched. Questions are asked in between, while nothing is held.
// - So whatever happens while a question is open takes effect at once: a log-off, a logon that asks
//   nothing, new users. The question stays open and its answer then counts as usual.
// - One logon asks at a time. Another one that would have to ask meanwhile counts as cancelled.
// - A cancelled question leaves whoever has logged on meanwhile. So does an answer for a logon
//   system that is not the current one any more.
// Order of locks: the decision's, the session object's, the one around the current user. The
// session object may therefore ask who is logged on, whatever it holds. Changing a user
// is no decision and needs none of these locks; the session object sees it at its next judgement.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/user_collection.h"
#include "storage/settings.h"

namespace quillgate {

// The users that a logon may be for, as they are at each call: they may change while a person is
// being asked. Any thread.
class LogonCandidates {
 public:
  virtual ~LogonCandidates() = default;

  // In the order of the list.
  virtual std::vector<std::wstring> Names() const = 0;
  // Whether there is such a user and this is the password.
  virtual bool Accepts(std::wstring_view name, std::wstring_view password) const = 0;
};

// The dialogs of a logon. Each is modal and answers nothing when it was cancelled, which is also
// the answer where nobody can be asked.
class LogonPrompts {
 public:
  virtual ~LogonPrompts() = default;

  // The name that was accepted with its password. Under the NONE system only the override password
  // is asked for.
  virtual std::optional<std::wstring> AskLogon(LogonSystem system,
                                               const LogonCandidates& candidates) = 0;

  // The name of the first user of the QUILLGATE system, possibly empty; see IsStorableUserName.
  virtual std::optional<std::wstring> AskFirstUserName() = 0;

  // Says that the first user was made, with a blank password.
  virtual void NotifyFirstUserMade() = 0;
};

// Who is logged on to Windows; empty when that is not known.
class WindowsIdentity {
 public:
  virtual ~WindowsIdentity() = default;
  virtual std::wstring UserName() = 0;
};

// What a logon and a log-off mean to the connection. Implemented by the session object.
class SessionControl {
 public:
  virtual ~SessionControl() = default;
  virtual void Reevaluate() = 0;
  virtual void EndSession() = 0;
};

class LogonSession final : private LogonCandidates {
 public:
  LogonSession(Settings& settings, WindowsIdentity& identity);

  // Who asks, and who is to hear of logons. Null: nobody; every question then counts as cancelled.
  // The caller keeps them alive until it says otherwise here, and exchanges the one who asks only
  // while no question is open.
  void SetPrompts(LogonPrompts* prompts);
  void SetSessionControl(SessionControl* session);
  // Which users there are; null: none.
  void SetUsers(std::shared_ptr<UserCollection> users);

  bool IsLoggedOn() const;
  // The user as the collection has it now; null when nobody is logged on. One value is one state of
  // the user's rules, so a judgement takes it once.
  std::shared_ptr<const User> CurrentUser() const;

  // An empty name is an ordinary logon; "Admin" and "User" are the override commands of the NONE
  // system. Ends the session of whoever is logged on first. Whether a user is logged on afterwards.
  // A DBerror of the session reaches the caller.
  bool LogOn(std::wstring_view name);

  // The same for callers that must not wait for a person. False when somebody would have to be
  // asked; nothing is changed then.
  bool LogOnWithoutAsking(std::wstring_view name);

  // Ends the connection session, then nobody is logged on, also when the session's end threw. The
  // flag has no effect.
  void LogOff(int flag);

  // After SetUsers or a reload of the users: looks the current user up again by name; nobody is
  // logged on if that name is gone. Other changes of users are followed without.
  void RefreshCurrentUser();

  // Whoever holds it keeps decisions out: to exchange several of the things they work with at once.
  CriticalSection& DecisionLock() { return decision_; }

 private:
  class OpenQuestion;

  // Whether a logon of that name is a question. With the decision's lock held.
  bool Asks(LogonSystem system, std::wstring_view name) const;

  std::vector<std::wstring> Names() const override;
  bool Accepts(std::wstring_view name, std::wstring_view password) const override;

  // What the settings choose, or chose when they could be read last. With the decision's lock held.
  LogonSystem System() const;
  std::shared_ptr<UserCollection> Users() const;
  void SetCurrent(std::shared_ptr<const UserEntry> user);

  // The question of that system, with the first user made before if need be. Nothing is held.
  std::optional<std::wstring> Ask(LogonPrompts& prompts, LogonSystem system);
  // False when the question was cancelled.
  bool MakeFirstUser(LogonPrompts& prompts);
  // False when there is a user already, or the new one cannot be stored.
  bool StoreFirstUser(std::wstring name);

  // With the decision's lock held. No name: nobody was asked, or nobody accepted.
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
