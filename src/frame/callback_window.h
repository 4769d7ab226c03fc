// A hidden window whose messages go to the object that owns it. Created, used and destroyed on the
// service main thread; the map from windows to objects belongs to that thread too.
#pragma once

#include <windows.h>

namespace quillgate {

class CallbackWindow {
 public:
  CallbackWindow() = default;
  // Removes the object from the map, then destroys the window. DefWindowProcW handles the last
  // messages of the window.
  virtual ~CallbackWindow();
  CallbackWindow(const CallbackWindow&) = delete;
  CallbackWindow& operator=(const CallbackWindow&) = delete;

  // Creates the window: no title, no style, no size, no parent. WindowProc receives messages from
  // WM_CREATE on, so before Create returns. False when no window could be created; GetLastError
  // returns the reason.
  bool Create();

  // Null before Create and after the window has been destroyed.
  HWND Window() const { return window_; }

 protected:
  // Handles one message and returns its result. An exception is dropped, and DefWindowProcW handles
  // the message instead.
  virtual LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

 private:
  static LRESULT CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam,
                                     LPARAM lParam) noexcept;
  static LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
};

}  // namespace quillgate
