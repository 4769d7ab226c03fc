#include "service/logon_requests.h"

namespace quillgate {

bool LogonRequests::LogOn(std::wstring_view name) noexcept {
  try {
    return logon_.LogOn(name);
  } catch (...) {
    events_.LogCurrentException();
    return logon_.IsLoggedOn();
  }
}

void LogonRequests::LogOn() noexcept {
  LogOn(std::wstring_view());
}

void LogonRequests::LogOnOrPost() noexcept {
  try {
    if (logon_.LogOnWithoutAsking({})) return;
    const HWND window = requestWindow_;
    if (window != nullptr) ::PostMessageW(window, kLogOnRequested, 0, 0);
  } catch (...) {
    events_.LogCurrentException();
  }
}

void LogonRequests::LogOff(int flag) noexcept {
  try {
    logon_.LogOff(flag);
  } catch (...) {
    events_.LogCurrentException();
  }
}

bool LogonRequests::LogOnFromTray(std::wstring_view name) {
  return LogOn(name);
}

void LogonRequests::LogOffFromTray() {
  LogOff(1);
}

}  // namespace quillgate
