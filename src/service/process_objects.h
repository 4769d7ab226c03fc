// The objects of which the process has one each, and what each is given to work with. Made at
// process entry, before any thread; destroyed at process exit, after the service has stopped. Only
// this folder makes them: everything else takes what it uses in its constructor.
#pragma once

#include <atomic>
#include <memory>

#include "accounts/logon_session.h"
#include "frame/stop_request.h"
#include "service/desktop_objects.h"
#include "service/event_log.h"
#include "service/event_log_indicator.h"
#include "service/logon_requests.h"
#include "service/monitor_thread.h"
#include "service/relay_indicator.h"
#include "service/windows_logon_name.h"
#include "session/session_log.h"
#include "text/message_catalogue.h"
#include "usage/week_calendar.h"

namespace quillgate {

class ProcessObjects {
 public:
  ProcessObjects() = default;
  // Ends the monitor, then opens the gate and brings the drivers down.
  ~ProcessObjects();
  ProcessObjects(const ProcessObjects&) = delete;
  ProcessObjects& operator=(const ProcessObjects&) = delete;

  EventLog& Events() { return events_; }
  Database& GetDatabase() { return database_; }
  Settings& GetSettings() { return settings_; }
  MessageCatalogue& Catalogue() { return catalogue_; }
  WeekCalendar& Calendar() { return calendar_; }
  RelayIndicator& Indicator() { return indicator_; }
  LogonSession& Logon() { return logon_; }
  LogonRequests& Logons() { return logonRequests_; }
  StopRequest& Stop() { return stop_; }

  // On the service main thread, before and after its message loop. Where there is no desktop, or
  // the tray cannot be made, which is logged, the state of the gate shows in the event log and
  // every question of a logon counts as cancelled.
  void EnterDesktop();
  void LeaveDesktop();

  // The session object, made on the first call, which the service main thread makes. From then on
  // logons and log-offs switch the gate.
  SessionLog& Session();

  // What the service begins with, and what needs no desktop: recovers what a crash left, closes the
  // gate, loads the users, and logs on where no dialog is needed for that.
  void BeginSession();
  void RecoverSessions() noexcept;

  // For a process that ends though its main routine does not: opens the gate. Any thread.
  void OpenGateForGood();

  // The users of the logon system that the settings choose; the NONE system's two are made if its
  // table is known to be empty. A user that cannot be read whole is logged.
  void LoadUsers();
  void ReleaseUsers();

  // Makes the monitor and starts it. Throws std::runtime_error.
  void StartMonitor();
  // Null before StartMonitor.
  MonitorThread* Monitor() { return monitor_.get(); }

 private:
  LogonSystem AwaitLogonSystem();
  bool HasNoUsers();
  void ReportMissingHook();

  EventLog events_;
  StopRequest stop_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  WeekCalendar calendar_;
  EventLogIndicator eventLogIndicator_{events_};
  RelayIndicator indicator_{eventLogIndicator_};
  WindowsLogonName windowsLogonName_{database_};
  LogonSession logon_{settings_, windowsLogonName_};
  LogonRequests logonRequests_{logon_, events_};
  std::shared_ptr<UserCollection> users_;
  std::unique_ptr<DesktopObjects> desktop_;
  std::unique_ptr<SessionLog> session_;
  std::atomic<SessionLog*> madeSession_{nullptr};  // for other threads
  std::unique_ptr<MonitorThread> monitor_;
};

}  // namespace quillgate
