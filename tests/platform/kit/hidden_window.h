// A hidden window for tests that need an owner: of a class of its own, on the thread that makes the
// object, and gone with it.
#pragma once

#include <windows.h>

class HiddenWindow {
 public:
  explicit HiddenWindow(WNDPROC procedure = ::DefWindowProcW) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.lpszClassName = L"HiddenWindow";
    ::RegisterClassW(&windowClass);
    window_ = ::CreateWindowExW(0, L"HiddenWindow", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                                nullptr);
  }
  ~HiddenWindow() {
    ::DestroyWindow(window_);
    ::UnregisterClassW(L"HiddenWindow", nullptr);
  }
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;

  HWND Get() const { return window_; }

 private:
  HWND window_ = nullptr;
};
