#include "service/logon_requests.h"

namespace quillgate {

void LogonRequests::LogOn() noexcept {
  const CriticalSectionLock hold(lock_);
  try {
    logon_.LogOn({});
  } catch (...) {
    events_.LogCurrentException();
  }
}

void LogonRequests::LogOff(int flag) noexcept {
  const CriticalSectionLock hold(lock_);
  try {
    logon_.LogOff(flag);
  } catch (...) {
    events_.LogCurrentException();
  }
}

void LogonRequests::SetUsers(UserCollection* users) {
  const CriticalSectionLock hold(lock_);
  logon_.SetUsers(users);
}

void LogonRequests::SetSessionControl(SessionControl* session) {
  const CriticalSectionLock hold(lock_);
  logon_.SetSessionControl(session);
}

}  // namespace quillgate
