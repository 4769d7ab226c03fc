// A hidden window that keeps the desktop from one dialog to the next, as the service's own do.
#pragma once

#include "frame/callback_window.h"

namespace quillgate {

class LastingWindow final : public CallbackWindow {
 private:
  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    return ::DefWindowProcW(window, message, wParam, lParam);
  }
};

}  // namespace quillgate
