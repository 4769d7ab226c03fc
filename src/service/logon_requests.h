// Logons and log-offs as the rest of the process asks for them; whatever fails in one is logged.
// Only the service main thread, which shows every dialog, waits for a person: a logon that the
// system asks for on another thread is handed over when it would have to.
#pragma once

#include <windows.h>

#include <atomic>

#include "accounts/logon_session.h"
#include "service/event_log.h"
#include "ui/logon_control.h"

namespace quillgate {

// Posted to the window that takes requests: carry out the ordinary logon.
inline constexpr UINT kLogOnRequested = WM_APP + 1;

class LogonRequests final : public LogonControl {
 public:
  LogonRequests(LogonSession& logon, EventLog& events) : logon_(logon), events_(events) {}

  // Of the service main thread. Null: there is none yet, or any more.
  void SetRequestWindow(HWND window) { requestWindow_ = window; }

  // The ordinary logon of the active logon system. May ask: service main thread only.
  void LogOn() noexcept;
  // The same, on any thread, without waiting for a person: a logon that would have to ask is posted
  // to the window, and dropped when there is none.
  void LogOnOrPost() noexcept;
  // Any thread.
  void LogOff(int flag) noexcept;

  bool LogOnFromTray(std::wstring_view name) override;
  void LogOffFromTray() override;

 private:
  bool LogOn(std::wstring_view name) noexcept;

  LogonSession& logon_;
  EventLog& events_;
  std::atomic<HWND> requestWindow_{nullptr};
};

}  // namespace quillgate
