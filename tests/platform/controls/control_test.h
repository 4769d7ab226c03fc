// A parent window that writes down what its controls tell it, and the user at their widgets. The
// test's thread is the window thread, on Qt's offscreen platform unless QT_QPA_PLATFORM names
// another.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class ControlTest : public ::testing::Test {
 protected:
  ControlTest();
  ~ControlTest() override;

  HWND Parent() const { return parent_; }
  // For the keys of texts, which count in dialogs only.
  void BecomeDialog() const { WidgetOf(parent_)->setProperty("dialog", true); }

  // A visible child, with WS_TABSTOP unless it is a label, below those made before; its number is
  // the one before plus one, beginning with 1.
  HWND Make(const wchar_t* className, DWORD style, const wchar_t* text = L"", int width = 200,
            int height = 24);

  // "command NUMBER CODE" and "notify NUMBER CODE" since the last call, after everything that was
  // deferred; codes of WM_NOTIFY as signed numbers.
  std::vector<std::string> Notified();
  // Without waiting for what was deferred.
  std::vector<std::string> NotifiedAtOnce();
  // Runs what was deferred and lets events happen.
  static void Settle();

  // Answers a notification, after it was written down.
  std::function<LRESULT(const NMHDR&)> onNotify;
  std::function<void(int number, int code)> onCommand;

  static QWidget* WidgetOf(HWND window);
  template <class Widget>
  static Widget* WidgetOf(HWND window) {
    return qobject_cast<Widget*>(WidgetOf(window));
  }
  // In the middle of the widget.
  static void Click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
  static void Click(HWND window) { Click(WidgetOf(window)); }
  static void Press(HWND window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(WidgetOf(window), key, modifiers);
  }
  static void Type(HWND window, const QString& text) { QTest::keyClicks(WidgetOf(window), text); }
  static void Focus(HWND window);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam);

  HWND parent_ = nullptr;
  int made_ = 0;
  int bottom_ = 0;
  std::vector<std::string> notified_;
};

std::wstring TextOf(HWND window);

inline LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return ::SendMessageW(window, message, wParam, lParam);
}
template <class Data>
LRESULT Send(HWND window, UINT message, WPARAM wParam, Data* data) {
  return ::SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(data));
}
