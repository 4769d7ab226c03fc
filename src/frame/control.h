// A control of a dialog, found by its identifier. Does not own the window, which the dialog
// destroys; cheap to construct where it is needed. If the dialog has no such control, every
// function is ignored.
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
  // The font must outlive the control.
  void SetFont(HFONT font) const { Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE); }

  // The width of the text in the control's font, in pixels.
  int TextWidth(const std::wstring& text) const;

  // Moves the control within the client area of its parent. In pixels.
  void MoveBy(int x, int y) const;
  // In the client area of that window.
  RECT BoundsIn(HWND window) const;

 protected:
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(window_, message, wParam, lParam);
  }

 private:
  HWND window_;
};

}  // namespace quillgate
