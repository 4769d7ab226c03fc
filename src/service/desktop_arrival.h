// A hidden window of a service that has started where there is no desktop: enters the desktop when
// one comes, which WM_DISPLAYCHANGE tells. Used on the service main thread.
#pragma once

#include "frame/callback_window.h"
#include "service/process_objects.h"

namespace quillgate {

class DesktopArrival final : public CallbackWindow {
 public:
  explicit DesktopArrival(ProcessObjects& objects) : objects_(objects) {}

 private:
  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_DISPLAYCHANGE) objects_.EnterDesktop();
    return ::DefWindowProcW(window, message, wParam, lParam);
  }

  ProcessObjects& objects_;
};

}  // namespace quillgate
