// What the user does with real clicks and keys. Cells are 50 wide and 21 high, as are the headings.
#include "grid_host.h"

namespace quillgate {
namespace {

// The middle of a data cell of a grid that is not scrolled.
QPoint MiddleOf(std::int32_t row, std::int32_t col) {
  return {50 * col + 25, 21 * row + 10};
}

class GridInputTest : public GridHostTest {
 protected:
  GridInputTest() { Send(grid_, GCM_SETEDITABLE, 1); }
};

// A bar at the bottom leaves room for seven whole rows below the headings.
TEST_F(GridInputTest, ClicksAndKeysMoveTheCursorOrEditOrAreForTheParent) {
  const auto type = [&](auto keys) { return [=, this] { Type(grid_, keys); }; };
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[&] { Click(grid_, MiddleOf(3, 2)); },
       "500 23 0,0; 500 25 3,2; 500 6 3,2; 500 5 3,2; 500 7 3,2; 500 5 3,2; "},
      {type("1~2"), "500 8 3,2; "},
      {type(" Ab"), ""},
      {type(Qt::Key_Backspace), ""},
      {type(Qt::Key_Return), "500 10 3,2; 500 6 4,2; 500 5 4,2; "},
      {type(Qt::Key_Down), "500 6 5,2; 500 5 5,2; "},
      {type(Qt::Key_Up), "500 6 4,2; 500 5 4,2; "},
      {type(Qt::Key_Right), "500 7 4,3; 500 5 4,3; "},
      {type(Qt::Key_Left), "500 7 4,2; 500 5 4,2; "},
      {type(Qt::Key_PageDown), "500 6 11,2; 500 5 11,2; "},
      {type(Qt::Key_PageUp), "500 6 4,2; 500 5 4,2; "},
      {type(Qt::Key_F1), "500 11 4,2; "},
      {type(Qt::Key_F12), "500 22 4,2; "},
      {type(Qt::Key_Delete), "500 9 4,2; "},
      {[&] { Send(grid_, GCM_SETEDITABLE, 0); }, ""},
      {type("5"), ""},
      {type(Qt::Key_Tab), "500 24 0,0; "}};
  TakeNotified();
  for (const auto& [act, told] : cases) {
    EXPECT_EQ(::GetFocus() == grid_, &act != &cases[0].first) << told;
    act();
    EXPECT_EQ(TakeNotified(), told);
  }
  EXPECT_EQ(::GetFocus(), host_);
  EXPECT_EQ(TextOf(grid_, {3, 2}), L"12 A");
}

TEST_F(GridInputTest, TheCellUnderTheMouseIsNotifiedUnderOneIdentifier) {
  const HWND other = MakeGrid(77);
  TakeMoves();
  MoveTo(other, MiddleOf(3, 2));
  EXPECT_EQ(TakeMoves(), "500 2 3,2; ");
}

TEST_F(GridInputTest, AColumnsBorderIsDragged) {
  Send(grid_, GCM_SETCOLRESIZE, 1);
  const QPoint border{98, 10};
  MoveTo(grid_, border);
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_SIZEWE));
  Press(grid_, border);
  MoveTo(grid_, border + QPoint(30, 5));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 80);
  Release(grid_, border + QPoint(30, 5));
  MoveTo(grid_, {220, 100});
  EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_EQ(Send(grid_, GCM_GETCOLWIDTH, 1), 80);
}

TEST_F(GridInputTest, EveryRequestOfABarTakesTheFocusAndScrollsInItsDirection) {
  const std::tuple<UINT, int, int, int> cases[] = {
      // 100 rows, seven of which are shown whole.
      {WM_VSCROLL, SB_PAGEDOWN, 0, 8},       {WM_VSCROLL, SB_PAGEUP, 0, 1},
      {WM_VSCROLL, SB_LINEDOWN, 0, 2},       {WM_VSCROLL, SB_LINEUP, 0, 1},
      {WM_VSCROLL, SB_THUMBTRACK, 4000, 94}, {WM_VSCROLL, SB_ENDSCROLL, 0, 94},
      {WM_HSCROLL, SB_PAGERIGHT, 0, 2},      {WM_HSCROLL, SB_THUMBTRACK, 255, 255},
  };
  for (const auto& [message, request, place, position] : cases) {
    Send(grid_, message, MAKEWPARAM(request, place));
    EXPECT_EQ(::GetScrollPos(grid_, message == WM_VSCROLL ? SB_VERT : SB_HORZ), position)
        << request;
  }
  EXPECT_EQ(::GetFocus(), grid_);
  MoveTo(grid_, MiddleOf(1, 1));
  EXPECT_EQ(TakeMoves(), "500 2 94,255; ");
}

TEST_F(GridInputTest, BarsAreShownOnlyWhereTheyAreNeeded) {
  for (const auto& [rows, cols] : {std::pair(5, 4), {50, 4}, {5, 40}, {50, 40}}) {
    Send(grid_, GCM_SETSIZE, static_cast<WPARAM>(rows), cols);
    RECT area{};
    ::GetClientRect(grid_, &area);
    EXPECT_EQ(area.right, rows == 50 ? 320 - ::GetSystemMetrics(SM_CXVSCROLL) : 320);
    EXPECT_EQ(area.bottom, cols == 40 ? 200 - ::GetSystemMetrics(SM_CYHSCROLL) : 200);
  }
}

}  // namespace
}  // namespace quillgate
