#include "service/service_window.h"

#include <wtsapi32.h>

namespace quillgate {
namespace {

// The flag of LogOff at the ordinary end of a logon, and after a critical resume.
constexpr int kOrdinaryLogOff = 1;
constexpr int kLogOffAfterCrash = 0;

}  // namespace

ServiceWindow::ServiceWindow(ProcessObjects& objects)
    : objects_(objects), notificationLibrary_(::LoadLibraryW(L"wtsapi32.dll")) {
  if (!notificationLibrary_.IsValid()) return;
  const HMODULE library = notificationLibrary_.Get();
  registerNotification_ = reinterpret_cast<RegisterNotification>(
      ::GetProcAddress(library, "WTSRegisterSessionNotification"));
  unregisterNotification_ = reinterpret_cast<UnregisterNotification>(
      ::GetProcAddress(library, "WTSUnRegisterSessionNotification"));
  if (registerNotification_ != nullptr && unregisterNotification_ != nullptr) return;
  registerNotification_ = nullptr;
  unregisterNotification_ = nullptr;
  notificationLibrary_.Reset();
}

ServiceWindow::~ServiceWindow() {
  objects_.Logons().SetRequestWindow(nullptr);
  if (notificationLibrary_.IsValid()) unregisterNotification_(Window());
}

LRESULT ServiceWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CREATE:
      OnCreate(window);
      break;
    case WM_POWERBROADCAST:
      if (OnPowerEvent(wParam)) return TRUE;
      break;
    case WM_WTSSESSION_CHANGE:
      OnSessionChange(wParam);
      break;
    case WM_DISPLAYCHANGE:
      // The first desktop may come long after the service's start.
      objects_.EnterDesktop();
      break;
    case kLogOnRequested:
      objects_.Logons().LogOn();
      break;
    default:
      break;
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

void ServiceWindow::OnCreate(HWND window) {
  objects_.Logons().SetRequestWindow(window);
  // A stop while the setup wizard was open leaves the first start to the next one.
  if (objects_.IsFirstStart() && !objects_.Stop().IsRaised()) OnFirstStart();
  if (registerNotification_ != nullptr) registerNotification_(window, NOTIFY_FOR_ALL_SESSIONS);
}

void ServiceWindow::OnFirstStart() {
  if (System() == LogonSystem::kQuillgate) objects_.Logons().LogOn();
  objects_.GetSettings().SetSetting(SettingKey::kFirstStart, L"0");
  const MessageCatalogue& catalogue = objects_.Catalogue();
  objects_.Indicator().ShowMessage(catalogue.GetMessageText(kMsgWelcomeText),
                                   catalogue.GetMessageText(kMsgWelcome), BalloonIcon::kInformation,
                                   0);
}

bool ServiceWindow::OnPowerEvent(WPARAM event) {
  switch (event) {
    case PBT_APMQUERYSUSPEND:
      return true;
    case PBT_APMSUSPEND:
      objects_.Logons().LogOff(kOrdinaryLogOff);
      return true;
    case PBT_APMRESUMECRITICAL:
      // The session before counts as crashed. Deliberate, see docs/behaviour.md.
      objects_.RecoverSessions();
      objects_.Logons().LogOff(kLogOffAfterCrash);
      objects_.Logons().LogOn();
      return true;
    case PBT_APMRESUMESUSPEND:
      objects_.Logons().LogOn();
      return true;
    default:
      return false;
  }
}

void ServiceWindow::OnSessionChange(WPARAM reason) {
  // Under the WINDOWS system the log-off control of the logon notification package ends the
  // session.
  if (reason == WTS_CONSOLE_DISCONNECT && System() != LogonSystem::kWindows) {
    objects_.Logons().LogOff(kOrdinaryLogOff);
  }
}

LogonSystem ServiceWindow::System() {
  return CurrentLogonSystem(objects_.GetSettings());
}

}  // namespace quillgate
