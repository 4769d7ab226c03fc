// Tests of windows on Qt's offscreen platform. Each runs as the window thread, on a thread of its
// own, so that every test loads the desktop and leaves it.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

class WindowOnDesktop : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  static void OnWindowThread(const std::function<void()>& body);

  // Windows of a class of this fixture count their messages and give these answers, or the default
  // one to all other messages.
  using Answer = std::function<LRESULT(HWND, WPARAM, LPARAM)>;
  void On(UINT message, Answer answer) { answers_[message] = std::move(answer); }
  static HWND Create(const wchar_t* title, RECT place, DWORD style, HWND parent = nullptr,
                     int id = 0, HBRUSH brush = nullptr, UINT classStyle = 0);
  // How many messages of that number the windows have got.
  int CountOf(UINT message) const;

  // Lets messages flow until the condition holds; false, and a failure, when it does not in time.
  static bool Pump(const std::function<bool()>& condition);
  // Lets flow what is on its way.
  static void PumpAll();
  static QWidget* WidgetOf(HWND window);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  std::map<UINT, Answer> answers_;
  std::vector<UINT> seen_;
};
