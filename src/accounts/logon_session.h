// Who is logged on: one user of the current logon system, or nobody. The process has one
// LogonSession, made by service/. LogOn and LogOff run on the service main thread or the service
// control dispatcher thread, one at a time; the questions may be asked on any thread.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "accounts/user_collection.h"
#include "storage/settings.h"

namespace quillgate {

// The dialogs of a logon. Each is modal and answers nothing when it was cancelled, which is also
// the answer where nobody can be asked.
class LogonPrompts {
 public:
  virtual ~LogonPrompts() = default;

  // The name that was accepted with its password. Under the NONE system only the override password
  // is asked for.
  virtual std::optional<std::wstring> AskLogon(LogonSystem system, UserCollection& users) = 0;

  // The name of the first user of the QUILLGATE system, possibly empty.
  virtual std::optional<std::wstring> AskFirstUserName() = 0;

  // Says that the first user was made, with a blank password.
  virtual void TellFirstUserMade() = 0;
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

class LogonSession {
 public:
  LogonSession(Settings& settings, LogonPrompts& prompts, WindowsIdentity& identity);

  // Who is to hear of logons, and which users there are. Null: nobody, none. The caller keeps them
  // alive until it says otherwise here.
  void SetSessionControl(SessionControl* session);
  void SetUsers(UserCollection* users);

  bool IsLoggedOn() const;
  // Null when nobody is logged on.
  std::shared_ptr<const User> CurrentUser() const;

  // An empty name is an ordinary logon; "Admin" and "User" are the override commands of the NONE
  // system. Ends the session of whoever is logged on first. Whether a user is logged on afterwards.
  // A DBerror of the session reaches the caller.
  bool LogOn(std::wstring_view name);

  // Ends the connection session, then nobody is logged on, also when the session's end threw. The
  // flag has no effect.
  void LogOff(int flag);

  // Looks the current user up again by name; nobody is logged on if that name is gone.
  void RefreshCurrentUser();

 private:
  std::shared_ptr<User> FindLogonUser(LogonSystem system, std::wstring_view name);
  std::shared_ptr<User> FindQuillgateUser();
  // False when the question was cancelled. A name that cannot be added is dropped silently.
  bool MakeFirstUser();
  void SetCurrent(std::shared_ptr<User> user);

  Settings& settings_;
  LogonPrompts& prompts_;
  WindowsIdentity& identity_;
  SessionControl* session_ = nullptr;
  UserCollection* users_ = nullptr;
  mutable CriticalSection lock_;
  std::shared_ptr<User> current_;
};

}  // namespace quillgate
