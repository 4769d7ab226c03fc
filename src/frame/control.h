// A control of a dialog, by its identifier. Borrowed from the dialog, which outlives it; cheap to
// make where it is needed. A control that the dialog does not have ignores everything.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

class Control {
 public:
  Control(HWND dialog, int identifier) : window_(::GetDlgItem(dialog, identifier)) {}

  HWND Window() const { return window_; }

  void Show(bool shown) const { ::ShowWindow(window_, shown ? SW_SHOW : SW_HIDE); }
  void Enable(bool enabled) const { ::EnableWindow(window_, enabled ? TRUE : FALSE); }
  void Focus() const { ::SetFocus(window_); }

  void SetText(const std::wstring& text) const { ::SetWindowTextW(window_, text.c_str()); }
  std::wstring Text() const;

  // Pixels; relative to the dialog's client area.
  void MoveBy(int x, int y) const;

 protected:
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(window_, message, wParam, lParam);
  }

 private:
  HWND window_;
};

}  // namespace quillgate
