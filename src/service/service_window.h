// The service's hidden window: hears of suspensions, resumptions and changes of the console's
// session, and carries out the first steps of the service when it is created. Lives on the service
// main thread.
#pragma once

#include "frame/callback_window.h"
#include "service/process_objects.h"

namespace quillgate {

class ServiceWindow final : public CallbackWindow {
 public:
  // Loads the library of session notifications if this system has it.
  explicit ServiceWindow(ProcessObjects& objects);
  ~ServiceWindow() override;

 private:
  using RegisterNotification = BOOL(WINAPI*)(HWND window, DWORD flags);
  using UnregisterNotification = BOOL(WINAPI*)(HWND window);

  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

  void OnCreate(HWND window);
  void OnFirstStart();
  // Whether the event was one of those that are answered with TRUE.
  bool OnPowerEvent(WPARAM event);
  void OnSessionChange(WPARAM reason);

  LogonSystem System();

  ProcessObjects& objects_;
  ModuleHandle notificationLibrary_;
  RegisterNotification registerNotification_ = nullptr;
  UnregisterNotification unregisterNotification_ = nullptr;
};

}  // namespace quillgate
