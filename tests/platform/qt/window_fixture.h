// Tests of windows on Qt's offscreen platform. QT_QPA_PLATFORM may name another platform.
#pragma once

#include <windows.h>

#include <gmock/gmock.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

// What few windows need.
struct WindowTraits {
  int id = 0;
  DWORD style = 0;
  HBRUSH brush = nullptr;
  UINT classStyle = 0;
  LPCWSTR cursor = nullptr;
};

class WindowOnDesktop : public ::testing::Test {
 protected:
  static constexpr RECT kPlace = {60, 70, 260, 170};
  static constexpr RECT kChildBounds = {10, 20, 60, 50};

  WindowOnDesktop() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    current_ = this;
  }
  ~WindowOnDesktop() override { current_ = nullptr; }

  // On a thread of its own, so that every test loads the desktop and leaves it.
  static void OnWindowThread(const std::function<void()>& body) { std::thread(body).join(); }
  // On the window thread, with a visible window that the user is in.
  void WithWindow(const std::function<void()>& body, const WindowTraits& traits = {}) {
    OnWindowThread([&] {
      window_ = Create(WS_VISIBLE, kPlace, nullptr, traits);
      PumpUntilActive(window_);
      body();
    });
  }

  // Windows of the fixture's classes count their messages and give these answers, or the default
  // one to all other messages.
  using Answer = std::function<LRESULT(HWND, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer) { answers_[message] = std::move(answer); }
  // Those that are only heard are answered with 0.
  void Hear(UINT message, const std::function<void(HWND, WPARAM, LPARAM)>& act) {
    On(message, [act](HWND window, WPARAM wParam, LPARAM lParam) -> LRESULT {
      act(window, wParam, lParam);
      return 0;
    });
  }
  void OnPaint(const std::function<void(HWND, const PAINTSTRUCT&)>& paint) {
    On(WM_PAINT, [paint](HWND window, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT painting{};
      const HDC context = ::BeginPaint(window, &painting);
      EXPECT_EQ(context, painting.hdc);
      paint(window, painting);
      return ::EndPaint(window, &painting);
    });
  }
  // How many messages of that number the windows have got.
  int CountOf(UINT message) const { return static_cast<int>(std::ranges::count(seen_, message)); }

  static HWND Create(DWORD style = WS_VISIBLE, RECT place = kPlace, HWND parent = nullptr,
                     const WindowTraits& traits = {}) {
    std::wstring name = L"Shown";
    for (const auto each : {reinterpret_cast<UINT_PTR>(traits.brush), UINT_PTR{traits.classStyle},
                            reinterpret_cast<UINT_PTR>(traits.cursor)})
      name += L"-" + std::to_wstring(each);
    WNDCLASSW windowClass{};
    windowClass.style = traits.classStyle;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hCursor =
        traits.cursor != nullptr ? ::LoadCursorW(nullptr, traits.cursor) : nullptr;
    windowClass.hbrBackground = traits.brush;
    windowClass.lpszClassName = name.c_str();
    ::RegisterClassW(&windowClass);
    return ::CreateWindowExW(0, name.c_str(), L"", style | traits.style, place.left, place.top,
                             place.right - place.left, place.bottom - place.top, parent,
                             reinterpret_cast<HMENU>(static_cast<UINT_PTR>(traits.id)), nullptr,
                             nullptr);
  }
  static HWND CreateChild(HWND parent, RECT place = kChildBounds, const WindowTraits& traits = {}) {
    return Create(WS_CHILD | WS_VISIBLE, place, parent, traits);
  }
  static HWND CreateButton(HWND parent) {
    return ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 100, 20, 50, 30, parent,
                             nullptr, nullptr, nullptr);
  }

  // Lets messages flow until the condition holds, which must be in time.
  static void Pump(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
      ASSERT_LT(std::chrono::steady_clock::now(), limit) << "it does not happen";
      TakeMessages();
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
  // Lets flow what is on its way.
  static void PumpAll() {
    constexpr int kTurns = 20;
    for (int turn = 0; turn < kTurns; ++turn)
      TakeMessages();
  }
  static void PumpUntilActive(HWND window) {
    Pump([&] { return QApplication::activeWindow() == WidgetOf(window); });
    PumpAll();
  }

  static QWidget* WidgetOf(HWND window) {
    const qulonglong handle{reinterpret_cast<UINT_PTR>(window)};
    for (QWidget* each : QApplication::allWidgets()) {
      if (each->property("windowHandle") == QVariant(handle)) return each;
    }
    return nullptr;
  }
  template <class Widget>
  static Widget* WidgetOf(HWND window) {
    return qobject_cast<Widget*>(WidgetOf(window));
  }
  // What the user sees there.
  static COLORREF Seen(HWND window, int x, int y) {
    const QColor colour = WidgetOf(window)->grab().toImage().pixelColor(x, y);
    return RGB(colour.red(), colour.green(), colour.blue());
  }

  // On the screen.
  static RECT PlaceOf(HWND window) {
    RECT place{};
    EXPECT_TRUE(::GetWindowRect(window, &place));
    return place;
  }
  static std::vector<LONG> EdgesOf(const RECT& area) {
    return {area.left, area.top, area.right, area.bottom};
  }

  HWND window_ = nullptr;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (current_ != nullptr) {
      current_->seen_.push_back(message);
      const auto found = current_->answers_.find(message);
      if (found != current_->answers_.end()) return found->second(window, wParam, lParam);
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
  }

  static void TakeMessages() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
  }

  static inline WindowOnDesktop* current_ = nullptr;
  std::map<UINT, Answer> answers_;
  std::vector<UINT> seen_;
};

// With notes of what the windows are told, as the test writes them.
template <class Note>
class NotingWindow : public WindowOnDesktop {
 protected:
  // What has been told since the last time.
  std::vector<Note> Take() {
    PumpAll();
    return std::exchange(notified_, {});
  }

  std::vector<Note> notified_;
};
