// Dialogs that their caller waits for: modal dialogs, sheets. Used on the window thread.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/dialog/dialog_control.h"

namespace platform {

// Keeps a window from the user while a modal window is open, and makes it the active one at its
// end. A child stands for the top-level window it is in. Nothing happens without a window, or to
// one that was disabled before.
class DisabledOwner {
 public:
  explicit DisabledOwner(HWND window);
  ~DisabledOwner() { Enable(); }
  DisabledOwner(const DisabledOwner&) = delete;
  DisabledOwner& operator=(const DisabledOwner&) = delete;

  HWND Get() const { return window_; }
  // Before the modal window goes, so that the desktop does not choose another one. Twice is fine.
  void Enable();

 private:
  HWND window_ = nullptr;
  bool disabled_ = false;
};

// Runs the loop until the dialog has been ended or is gone; destroys it. What EndDialog was given;
// `onQuit`, which is a sheet's failure unless told otherwise, when WM_QUIT came first; 0 when the
// dialog was destroyed instead or the desktop went.
INT_PTR AwaitEnd(HWND dialog, DisabledOwner& owner, INT_PTR onQuit = -1);

}  // namespace platform
