// The hidden window of the service: receives suspend, resume and console session notifications,
// enters the desktop when one comes after the service's start, and executes the steps of the first
// start when it is created. Used on the service main thread.
#pragma once

#include "frame/callback_window.h"
#include "service/process_objects.h"

namespace quillgate {

class ServiceWindow final : public CallbackWindow {
 public:
  // Loads the library of the session notifications if this system has it.
  explicit ServiceWindow(ProcessObjects& objects);
  ~ServiceWindow() override;

 private:
  using RegisterNotification = BOOL(WINAPI*)(HWND window, DWORD flags);
  using UnregisterNotification = BOOL(WINAPI*)(HWND window);

  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

  void OnCreate(HWND window);
  void OnFirstStart();
  // Handles WM_POWERBROADCAST. True when the message returns TRUE.
  bool OnPowerEvent(WPARAM event);
  void OnSessionChange(WPARAM reason);

  LogonSystem System();

  ProcessObjects& objects_;
  ModuleHandle notificationLibrary_;
  RegisterNotification registerNotification_ = nullptr;
  UnregisterNotification unregisterNotification_ = nullptr;
};

}  // namespace quillgate
