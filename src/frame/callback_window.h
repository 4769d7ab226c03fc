// A hidden window whose messages go to the object that owns it. Made, used and destroyed on one
// thread, the service main thread; the map from windows to objects belongs to that thread too.
#pragma once

#include <windows.h>

namespace quillgate {

class CallbackWindow {
 public:
  CallbackWindow() = default;
  // Takes the object from the map and destroys the window, whose last messages the system answers.
  virtual ~CallbackWindow();
  CallbackWindow(const CallbackWindow&) = delete;
  CallbackWindow& operator=(const CallbackWindow&) = delete;

  // Makes the window: no title, no style, no size, no parent. Messages reach WindowProc from
  // WM_CREATE on, which comes before this returns. False when there is no window then; the last
  // error tells why.
  bool Create();

  // Null before Create and once the window is gone.
  HWND Window() const { return window_; }

 protected:
  // Answers one message. What it throws is dropped and the system answers instead.
  virtual LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

 private:
  static LRESULT CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam,
                                     LPARAM lParam) noexcept;
  static LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
};

}  // namespace quillgate
