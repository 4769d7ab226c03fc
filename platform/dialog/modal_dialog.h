// Modal dialogs and property sheets: disabling the owner and running the loop. For the window
// thread.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/dialog/dialog_control.h"

namespace platform {

// Disables the owner while a modal window is open, then enables and activates it. For a child its
// top-level window is the owner. Without a window, or with one that is disabled already, the object
// has no effect.
class DisabledOwner {
 public:
  explicit DisabledOwner(HWND window);
  ~DisabledOwner() { Enable(); }
  DisabledOwner(const DisabledOwner&) = delete;
  DisabledOwner& operator=(const DisabledOwner&) = delete;

  HWND Get() const { return window_; }
  // Enables the owner. Called before the modal window is destroyed, so that the desktop does not
  // activate another window. May be called twice.
  void Enable();

 private:
  HWND window_ = nullptr;
  bool disabled_ = false;
};

// Runs the loop until the dialog is ended or destroyed, then destroys it. Returns the result passed
// to EndDialog; onQuit (by default the failure of a sheet) when WM_QUIT was received first; 0 when
// the dialog was destroyed instead or the desktop was lost.
INT_PTR AwaitEnd(HWND dialog, DisabledOwner& owner, INT_PTR onQuit = -1);

}  // namespace platform
