// A balloon that appears while the pointer rests over an area of a dialog, also over a disabled
// control there. Created and used on the service main thread.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

class BalloonTip {
 public:
  BalloonTip() = default;
  ~BalloonTip();
  BalloonTip(const BalloonTip&) = delete;
  BalloonTip& operator=(const BalloonTip&) = delete;

  // The area is in the dialog's client area. Replaces the area and the text of an earlier call.
  void Show(HWND dialog, const RECT& area, std::wstring text);

 private:
  HWND window_ = nullptr;
  std::wstring text_;
};

}  // namespace quillgate
