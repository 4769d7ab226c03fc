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

}  // namespace quillgate
