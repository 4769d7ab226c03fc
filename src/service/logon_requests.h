// Executes the logons and log-offs that other parts of the process request; failures are logged.
// Only the service main thread shows dialogs and waits for the user: a logon that the system
// requests on another thread is posted to the service main thread if it needs a dialog.
#pragma once

#include <windows.h>

#include <atomic>

#include "accounts/logon_session.h"
#include "service/event_log.h"
#include "ui/logon_control.h"

namespace quillgate {

// Posted to the request window: execute the ordinary logon.
inline constexpr UINT kLogOnRequested = WM_APP + 1;

class LogonRequests final : public LogonControl {
 public:
  LogonRequests(LogonSession& logon, EventLog& events) : logon_(logon), events_(events) {}

  // Sets the request window, which belongs to the service main thread; null when there is none.
  void SetRequestWindow(HWND window) { requestWindow_ = window; }

  // Executes the ordinary logon of the active logon system. May show a dialog: service main thread
  // only.
  void LogOn() noexcept;
  // The same on any thread, without waiting for the user: a logon that needs a dialog is posted to
  // the request window, and dropped when there is none.
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
