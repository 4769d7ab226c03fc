// Whether the program is to stop. The system may answer a question that a stop ended like one that
// was answered OK, and a popup menu swallows WM_QUIT; so whoever waited for a modal call, and the
// message loop, look here. Made by service/, which has one for the process.
#pragma once

#include <windows.h>

#include <atomic>

namespace quillgate {

class StopRequest {
 public:
  // For good; closes the popup menu that is open. Any thread. The thread with the dialogs still
  // needs its WM_QUIT.
  void Raise();
  bool IsRaised() const { return raised_; }

  // The window whose popup menu is about to open; null once it has closed. A menu opens only if no
  // stop has been raised after this was told.
  void SetMenuOwner(HWND owner) { menuOwner_ = owner; }

 private:
  std::atomic<bool> raised_ = false;
  std::atomic<HWND> menuOwner_ = nullptr;
};

}  // namespace quillgate
