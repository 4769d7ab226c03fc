// A window with grids in it, on a desktop that nobody sees, and the user who clicks and types in
// them. The window writes down what its grids tell it. For tests whose own thread is that of the
// windows.
#pragma once

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <QWidget>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "grid/grid_messages.h"
#include "grid/grid_notifications.h"
#include "grid/grid_types.h"
#include "grid/grid_window.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {

inline constexpr int kGridId = 500;

struct Told {
  int id = 0;
  int code = 0;
  LPARAM value = 0;

  bool operator==(const Told&) const = default;
};

// The value of a notification that tells where the cursor is.
constexpr LPARAM At(std::int32_t row, std::int32_t col) {
  return static_cast<LPARAM>(row) | static_cast<LPARAM>(col) << 16;
}

class GridHostTest : public testing::Test {
 protected:
  GridHostTest();
  ~GridHostTest() override;

  // --- windows ---
  HWND Host() const { return host_; }
  // At the host's upper left corner, 320 x 200, shown; null when it refuses to live. The class is
  // registered once, when the test begins.
  HWND MakeGrid(int id = kGridId, const wchar_t* title = L"");

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
  static std::wstring TextOf(HWND grid, GridCell cell);
  static GridCell CursorOf(HWND grid);

  // --- what the parent has been told, mouse moves excepted ---
  std::vector<Told> TakeTold() { return std::exchange(told_, {}); }
  std::vector<int> TakeCodes();
  // Of mouse moves: the identifiers, and the cells.
  std::vector<std::pair<int, GridCell>> TakeMoves() { return std::exchange(moves_, {}); }
  // Called with each notification as well.
  std::function<void(HWND grid, int code, LPARAM value)> onTold;

  // --- the user ---
  static void Press(HWND grid, QPoint place);
  static void Release(HWND grid, QPoint place);
  static void MoveTo(HWND grid, QPoint place);
  static void Click(HWND grid, QPoint place);
  static void Type(HWND grid, Qt::Key key);
  static void Type(HWND grid, const QString& text);
  // Lets flow what is on its way, and paints.
  static void Flow();
  static QWidget* WidgetOf(HWND window);

  // --- what the grid shows ---
  static std::vector<COLORREF> Pixels(HWND grid, const RECT& area);
  static COLORREF PixelAt(HWND grid, int x, int y) {
    return Pixels(grid, {x, y, x + 1, y + 1}).front();
  }

 private:
  static LRESULT CALLBACK HostProcedure(HWND window, UINT message, WPARAM wParam,
                                        LPARAM lParam) noexcept;
  void Note(WPARAM wParam, LPARAM lParam);

  platform::SimulatedMachine machine_;
  HWND host_ = nullptr;
  std::vector<Told> told_;
  std::vector<std::pair<int, GridCell>> moves_;
};

}  // namespace quillgate
