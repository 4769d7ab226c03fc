// Tests of windows on Qt's offscreen platform. Each runs as the window thread, on a thread of its
// own, so that every test loads the desktop and leaves it. QT_QPA_PLATFORM may name another
// platform.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>
#include <map>
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

  WindowOnDesktop();
  ~WindowOnDesktop() override { current_ = nullptr; }

  static void OnWindowThread(const std::function<void()>& body);
  // On the window thread, with a visible window that the user is in.
  void WithWindow(const std::function<void()>& body, const WindowTraits& traits = {});

  // Windows of the fixture's classes count their messages and give these answers, or the default
  // one to all other messages.
  using Answer = std::function<LRESULT(HWND, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer) { answers_[message] = std::move(answer); }
  // How many messages of that number the windows have got.
  int CountOf(UINT message) const;

  static HWND Create(DWORD style = WS_VISIBLE, RECT place = kPlace, HWND parent = nullptr,
                     const WindowTraits& traits = {});
  static HWND CreateChild(HWND parent, RECT place = kChildBounds, const WindowTraits& traits = {}) {
    return Create(WS_CHILD | WS_VISIBLE, place, parent, traits);
  }
  static HWND CreateButton(HWND parent, RECT place = {100, 20, 150, 50});

  // Lets messages flow until the condition holds, which must be in time.
  static void Pump(const std::function<bool()>& condition);
  // Lets flow what is on its way.
  static void PumpAll();
  static void PumpUntilActive(HWND window);
  static QWidget* WidgetOf(HWND window);
  // What the user sees there.
  static COLORREF Seen(HWND window, int x, int y);

  HWND window_ = nullptr;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  static inline WindowOnDesktop* current_ = nullptr;
  std::map<UINT, Answer> answers_;
  std::vector<UINT> seen_;
};
