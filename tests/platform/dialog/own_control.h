// A window of the program's own class that is the last control of a dialog, and a record of the
// keys that it gets. One at a time.
#pragma once

#include <windows.h>

#include <vector>

class OwnControl {
 public:
  static constexpr int kId = 1500;

  // Answers WM_GETDLGCODE with the code.
  OwnControl(LRESULT code, HWND dialog) : code_(code) {
    WNDCLASSW own{};
    own.lpfnWndProc = Procedure;
    own.lpszClassName = L"OwnControl";
    ::RegisterClassW(&own);
    current_ = this;
    window_ =
        ::CreateWindowExW(0, L"OwnControl", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 200, 60, 60,
                          40, dialog, reinterpret_cast<HMENU>(UINT_PTR{kId}), nullptr, nullptr);
  }
  ~OwnControl() {
    ::DestroyWindow(window_);
    current_ = nullptr;
  }
  OwnControl(const OwnControl&) = delete;
  OwnControl& operator=(const OwnControl&) = delete;

  HWND Window() const { return window_; }
  const std::vector<WPARAM>& Keys() const { return keys_; }
  const std::vector<WPARAM>& Characters() const { return characters_; }
  // The keys that it was asked about, each with its message.
  const std::vector<WPARAM>& Questions() const { return questions_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (current_ != nullptr ? message : WM_NULL) {
      case WM_GETDLGCODE: {
        const auto* key = reinterpret_cast<const MSG*>(lParam);
        if (key != nullptr && key->hwnd == window && key->wParam == wParam)
          current_->questions_.push_back(wParam);
        return current_->code_;
      }
      case WM_KEYDOWN:
        current_->keys_.push_back(wParam);
        return 0;
      case WM_CHAR:
        current_->characters_.push_back(wParam);
        return 0;
      default:
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
  }

  static inline OwnControl* current_ = nullptr;
  const LRESULT code_;
  HWND window_ = nullptr;
  std::vector<WPARAM> keys_;
  std::vector<WPARAM> characters_;
  std::vector<WPARAM> questions_;
};
