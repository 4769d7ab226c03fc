// The objects that exist once in the process, and their dependencies. Created at process entry,
// before any thread; destroyed at process exit, after the service has stopped. Only this folder
// creates them: all other code receives what it uses in its constructor.
#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "accounts/logon_session.h"
#include "frame/stop_request.h"
#include "service/desktop_objects.h"
#include "service/event_log.h"
#include "service/event_log_indicator.h"
#include "service/logon_requests.h"
#include "service/monitor_thread.h"
#include "service/relay_indicator.h"
#include "service/session_event_log.h"
#include "service/windows_logon_name.h"
#include "session/session_log.h"
#include "settings/settings_surroundings.h"
#include "text/message_catalogue.h"
#include "usage/week_calendar.h"

namespace quillgate {

class ProcessObjects final : public LogonSystemControl {
 public:
  ProcessObjects() = default;
  // Ends the monitor thread, then opens the gate and stops the drivers.
  ~ProcessObjects() override;
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
  WindowsIdentity& Identity() { return windowsLogonName_; }

  // Shows texts in the language of the settings from now on.
  void ApplyLanguage();
  // Whether no start of the service has got as far as its window yet.
  bool IsFirstStart();

  // Called on the service main thread: before its message loop, in it when a desktop comes, and
  // after it. If there is no desktop, or the tray cannot be created (which is logged), the event
  // log shows the state of the gate and every prompt of a logon counts as cancelled. Entering may
  // be tried again.
  void EnterDesktop();
  bool IsOnDesktop() const { return desktop_ != nullptr; }
  void LeaveDesktop();

  // Returns the session object. The first call creates it and is made on the service main thread.
  // From then on logons and log-offs switch the gate.
  SessionLog& Session();

  // The first steps of the service, which need no desktop: recovers the sessions of a crash, closes
  // the gate, loads the users, and logs on if that needs no dialog.
  void BeginSession();
  void RecoverSessions() noexcept;

  // Opens the gate when the process ends although its main routine does not return. Any thread.
  void OpenGateForGood();

  // Loads the users of the logon system that the settings choose. Under NONE, creates the two
  // built-in users if the table could be read and is empty. A user that cannot be read completely
  // is logged.
  void LoadUsers();
  void ReleaseUsers();

  // Creates the monitor thread and starts it; `afterCycle` is called after each of its cycles.
  // Throws std::runtime_error.
  void StartMonitor(std::function<void()> afterCycle = {});
  // Null before StartMonitor.
  MonitorThread* Monitor() { return monitor_.get(); }

  // --- the logon system; any thread ---
  std::shared_ptr<UserCollection> Users() const override { return logon_.Users(); }
  bool Switch(const std::function<bool()>& store) override;
  // As Switch for the setup wizard, whose `store` also writes users: the logon is an ordinary one.
  bool SetUp(const std::function<bool()>& store);
  // Takes over what a wizard in another process has stored, if it has.
  void FollowSetup() noexcept;

 private:
  // Stores, then ends the session, loads the users and logs on; see Switch. `logOn` is not called
  // under QUILLGATE.
  bool TakeOver(const std::function<bool()>& store, const std::function<void()>& logOn);
  LogonSystem AwaitLogonSystem();
  bool HasNoUsers(const UserCollection& users);
  void ReportMissingHook();

  EventLog events_;
  StopRequest stop_;
  Database database_;
  Settings settings_{database_};
  MessageCatalogue catalogue_;
  WeekCalendar calendar_;
  EventLogIndicator eventLogIndicator_{events_};
  RelayIndicator indicator_{eventLogIndicator_};
  SessionEventLog sessionEvents_{events_};
  WindowsLogonName windowsLogonName_{database_};
  LogonSession logon_{settings_, windowsLogonName_};
  LogonRequests logonRequests_{logon_, events_};
  std::unique_ptr<DesktopObjects> desktop_;
  std::unique_ptr<SessionLog> session_;
  std::atomic<SessionLog*> sharedSession_{nullptr};  // for other threads
  std::unique_ptr<MonitorThread> monitor_;
};

}  // namespace quillgate
