// Logons and log-offs that the system asks for, from the service main thread and from the control
// dispatcher's: one at a time, and whatever fails in one is logged.
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

  // Held by each request. Whoever holds it keeps them out: to exchange what a logon works with.
  CriticalSection& Lock() { return lock_; }

 private:
  LogonSession& logon_;
  EventLog& events_;
  CriticalSection lock_;
};

}  // namespace quillgate
