// A window with a grid in it, on a desktop that nobody sees, and the user who clicks and types in
// it. The window writes down what its grids tell it. For tests whose own thread is that of the
// windows.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "grid/grid_messages.h"
#include "grid/grid_notifications.h"
#include "grid/grid_types.h"
#include "grid/grid_window.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {

inline constexpr int kGridId = 500;

class GridHostTest : public testing::Test {
 protected:
  GridHostTest() {
    current_ = this;
    machine_.UseDesktop();
    RegisterGridClass(::GetModuleHandleW(nullptr));
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = HostProcedure;
    windowClass.lpszClassName = L"GridHost";
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_BTNFACE + 1});
    ::RegisterClassW(&windowClass);
    host_ = ::CreateWindowExW(0, windowClass.lpszClassName, L"Host", WS_VISIBLE, 0, 0, 600, 500,
                              nullptr, nullptr, nullptr, nullptr);
    EXPECT_NE(host_, nullptr);
    grid_ = MakeGrid();
  }
  ~GridHostTest() override {
    current_ = nullptr;
    ::DestroyWindow(host_);
    Flow();
  }

  // At the host's upper left corner, 320 x 200, shown; null when it refuses to live. The class is
  // registered once, when the test begins.
  HWND MakeGrid(int id = kGridId, const wchar_t* title = L"") {
    const HWND grid = ::CreateWindowExW(0, kGridClassName, title, WS_CHILD | WS_VISIBLE, 0, 0, 320,
                                        200, host_, reinterpret_cast<HMENU>(UINT_PTR(id)),
                                        ::GetModuleHandleW(nullptr), nullptr);
    Flow();
    return grid;
  }

  // --- messages ---
  static LRESULT Send(HWND grid, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return ::SendMessageW(grid, message, wParam, lParam);
  }
  static LRESULT SendCell(HWND grid, UINT message, GridCell cell, LPARAM lParam = 0) {
    return Send(grid, message, reinterpret_cast<WPARAM>(&cell), lParam);
  }
  static LRESULT Store(HWND grid, GridCell cell, const wchar_t* text) {
    return SendCell(grid, GCM_SETCELL, cell, reinterpret_cast<LPARAM>(text));
  }
  static std::wstring TextOf(HWND grid, GridCell cell) {
    wchar_t text[400] = L"?";
    SendCell(grid, GCM_GETCELL, cell, reinterpret_cast<LPARAM>(text));
    return text;
  }
  static GridCell CursorOf(HWND grid) {
    return {static_cast<std::int32_t>(Send(grid, GCM_GETCURSORROW)),
            static_cast<std::int32_t>(Send(grid, GCM_GETCURSORCOL))};
  }

  // What the parent has been told, as "identifier code row,column; "; mouse moves are apart.
  std::string TakeNotified() { return std::exchange(notified_, {}); }
  std::string TakeMoves() { return std::exchange(moves_, {}); }
  // Called with each notification as well.
  std::function<void(int code, LPARAM value)> onNotified;

  // --- the user ---
  static void Press(HWND grid, QPoint place) { Act(QTest::MousePress, grid, place); }
  static void Release(HWND grid, QPoint place) { Act(QTest::MouseRelease, grid, place); }
  static void MoveTo(HWND grid, QPoint place) { Act(QTest::MouseMove, grid, place); }
  static void Click(HWND grid, QPoint place) {
    Press(grid, place);
    // The grid may be gone by then.
    if (::IsWindow(grid)) Release(grid, place);
  }
  static void Type(HWND grid, Qt::Key key) {
    QTest::keyClick(WidgetOf(grid), key);
    Flow();
  }
  static void Type(HWND grid, const char* text) {
    QTest::keyClicks(WidgetOf(grid), text);
    Flow();
  }
  // Lets flow what is on its way, and paints.
  static void Flow() {
    for (int turn = 0; turn < 20; ++turn) {
      MSG message;
      while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
      }
    }
  }
  static QWidget* WidgetOf(HWND window) {
    for (QWidget* each : QApplication::allWidgets()) {
      const auto handle = each->property("windowHandle").toULongLong();
      if (handle == reinterpret_cast<UINT_PTR>(window)) return each;
    }
    return nullptr;
  }

  HWND host_ = nullptr;
  HWND grid_ = nullptr;

 private:
  static void Act(QTest::MouseAction action, HWND grid, QPoint place) {
    const auto button = action == QTest::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QTest::mouseEvent(action, WidgetOf(grid), button, Qt::NoModifier, place);
    Flow();
  }
  static LRESULT CALLBACK HostProcedure(HWND window, UINT message, WPARAM wParam,
                                        LPARAM lParam) noexcept {
    if (message != WM_COMMAND || current_ == nullptr)
      return ::DefWindowProcW(window, message, wParam, lParam);
    current_->Note(LOWORD(wParam), HIWORD(wParam), lParam);
    return 0;
  }
  void Note(int id, int code, LPARAM value) {
    const bool isMove = code == GCN_MOUSEMOVE;
    const GridCell cell =
        isMove ? *reinterpret_cast<const GridCell*>(value) : GridCell{LOWORD(value), HIWORD(value)};
    const QString note = QString("%1 %2 %3,%4; ").arg(id).arg(code).arg(cell.row).arg(cell.col);
    (isMove ? moves_ : notified_) += note.toStdString();
    if (onNotified) onNotified(code, value);
  }

  static inline GridHostTest* current_ = nullptr;

  platform::SimulatedMachine machine_;
  std::string notified_;
  std::string moves_;
};

}  // namespace quillgate
