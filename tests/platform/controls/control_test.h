// A parent window that writes down what its controls tell it, and the user at their widgets. The
// test's thread is the window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "platform/qt/window_fixture.h"

class ControlTest : public NotingWindow<std::string> {
 protected:
  ControlTest() {
    Hear(WM_COMMAND, [this](HWND, WPARAM wParam, LPARAM) {
      notified_.push_back("command " + std::to_string(LOWORD(wParam)) + ' ' +
                          std::to_string(HIWORD(wParam)));
    });
    On(WM_NOTIFY, [this](HWND, WPARAM wParam, LPARAM lParam) -> LRESULT {
      const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
      EXPECT_EQ(header.idFrom, wParam);
      EXPECT_TRUE(::IsWindow(header.hwndFrom));
      notified_.push_back("notify " + std::to_string(header.idFrom) + ' ' +
                          std::to_string(static_cast<int>(header.code)));
      if (onNotify) onNotify(header);
      return answer;
    });
    window_ = Create(WS_VISIBLE, {0, 0, 400, 400});
    WidgetOf(window_)->activateWindow();
    PumpUntilActive(window_);
  }
  ~ControlTest() override {
    ::DestroyWindow(window_);
    PumpAll();
  }

  HWND Parent() const { return window_; }

  // A visible child, with WS_TABSTOP unless it is a label, below those made before; its number is
  // the one before plus one, beginning with 1.
  HWND Make(const wchar_t* className, DWORD style, const wchar_t* text = L"", int width = 200,
            int height = 24) {
    const auto number = reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(++made_));
    const bool isLabel = std::wstring_view(className) == L"STATIC";
    const DWORD all = WS_CHILD | WS_VISIBLE | (isLabel ? 0u : WS_TABSTOP) | style;
    HWND made = ::CreateWindowExW(0, className, text, all, 10, bottom_, width, height, window_,
                                  number, ::GetModuleHandleW(nullptr), nullptr);
    bottom_ += height;
    return made;
  }

  // "command NUMBER CODE" and "notify NUMBER CODE" since the last call, after everything that was
  // deferred; codes of WM_NOTIFY as signed numbers.
  std::vector<std::string> Notified() { return Take(); }
  // Without waiting for what was deferred.
  std::vector<std::string> NotifiedAtOnce() { return std::exchange(notified_, {}); }

  // What else happens at WM_NOTIFY, and the answer to it.
  std::function<void(const NMHDR&)> onNotify;
  LRESULT answer = 0;

  // In the middle of the widget.
  static void Click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
  static void Press(HWND window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(WidgetOf(window), key, modifiers);
  }
  static void Focus(HWND window) {
    WidgetOf(window)->setFocus();
    PumpAll();
  }

 private:
  int made_ = 0;
  int bottom_ = 0;
};

inline LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return ::SendMessageW(window, message, wParam, lParam);
}
template <class Data>
LRESULT Send(HWND window, UINT message, WPARAM wParam, Data* data) {
  return ::SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(data));
}

inline std::wstring TextOf(HWND window) {
  std::wstring text(200, L'\0');
  text.resize(static_cast<std::size_t>(Send(window, WM_GETTEXT, text.size(), text.data())));
  return text;
}
