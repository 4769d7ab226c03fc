// Logons and log-offs that the system asks for, from the service main thread and from the control
// dispatcher's: one at a time, and whatever fails in one is logged. The users of the logon state
// are exchanged here too, so that none go away under a logon.
#pragma once

#include "accounts/logon_session.h"
#include "service/event_log.h"

namespace quillgate {

class LogonRequests {
 public:
  LogonRequests(LogonSession& logon, EventLog& events) : logon_(logon), events_(events) {}

  // The ordinary logon of the active logon system.
  void LogOn() noexcept;
  void LogOff(int flag) noexcept;

  // Null: none from now on. The former ones may be destroyed once this has returned.
  void SetUsers(UserCollection* users);
  void SetSessionControl(SessionControl* session);

 private:
  LogonSession& logon_;
  EventLog& events_;
  CriticalSection lock_;
};

}  // namespace quillgate
