#include "service/service_main_thread.h"

#include <windows.h>

#include <optional>
#include <stdexcept>

#include "service/service_module.h"
#include "service/service_window.h"
#include "service/setup_run.h"

namespace quillgate {
namespace {

constexpr DWORD kMonitorStopMilliseconds = 5000;
// Time for the monitor, which checks the stop request once a second, to notice it.
constexpr DWORD kStopPauseMilliseconds = 500;

}  // namespace

void ServiceMainThread::Run() {
  module_.SetMainThread();
  objects_.ApplyLanguage();
  ApplyFirstDayOfWeek();
  std::optional<ServiceWindow> window;
  try {
    objects_.BeginSession();
    objects_.StartMonitor([this] { module_.ReportAlive(); });
    // From here on calls may wait for a display server, which enforcement must not do.
    InitialiseControls();
    RunSetupAtFirstStart(objects_);
    objects_.EnterDesktop();
    window.emplace(objects_);
    if (!window->Create()) throw std::runtime_error("Could not create the service window.");
    RunMessageLoop();
  } catch (...) {
    TakeDown();
    throw;
  }
  TakeDown();
}

void ServiceMainThread::ApplyFirstDayOfWeek() {
  Settings& settings = objects_.GetSettings();
  WeekCalendar& calendar = objects_.Calendar();
  const std::wstring stored = settings.GetSetting(SettingKey::kFirstDayOfWeek, {});
  if (stored.empty()) {
    settings.SetSetting(SettingKey::kFirstDayOfWeek, std::to_wstring(calendar.GetFirstDayOfWeek()));
  } else {
    calendar.SetFirstDayOfWeek(static_cast<int>(SettingNumber(stored)));
  }
}

void ServiceMainThread::RunMessageLoop() {
  MSG message{};
  // An open popup menu may have swallowed WM_QUIT.
  while (!objects_.Stop().IsRaised() && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

void ServiceMainThread::TakeDown() {
  objects_.LeaveDesktop();
  MonitorThread* monitor = objects_.Monitor();
  if (monitor != nullptr) monitor->Stop(kMonitorStopMilliseconds);
  ::Sleep(kStopPauseMilliseconds);
  // The pause is enough for a monitor that sleeps; in the middle of a cycle it still uses the
  // database.
  if (monitor != nullptr) monitor->AwaitCycle();
  const CriticalSectionLock noLogons(objects_.Logon().DecisionLock());
  objects_.ReleaseUsers();
  objects_.GetDatabase().DbClose();
}

}  // namespace quillgate
