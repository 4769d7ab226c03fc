// Whether the program is to stop. A modal function that a stop ended may return as if the user had
// chosen OK, and a popup menu swallows WM_QUIT. So the message loop, and every caller of a modal
// function, check this flag. The process has one, created by service/.
#pragma once

#include <windows.h>

#include <atomic>

namespace quillgate {

class StopRequest {
 public:
  // Raises the request, which is never withdrawn, and closes the open popup menu. May be called on
  // any thread. The caller also posts WM_QUIT to the thread with the dialogs.
  void Raise();
  bool IsRaised() const { return raised_; }

  // Sets the owner window of the popup menu that is about to open; null once it has closed. The
  // caller sets the owner first, then opens the menu only if IsRaised is still false.
  void SetMenuOwner(HWND owner) { menuOwner_ = owner; }

 private:
  std::atomic<bool> raised_ = false;
  std::atomic<HWND> menuOwner_ = nullptr;
};

}  // namespace quillgate
