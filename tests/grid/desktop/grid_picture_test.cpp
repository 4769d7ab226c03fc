// What is to be seen of a grid. Cells are 50 wide and 21 high, as are the headings.
#include <algorithm>

#include "grid_host.h"

namespace quillgate {
namespace {

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kGrey = 0x808080;
constexpr COLORREF kPink = 0xC080FF;

class GridPictureTest : public GridHostTest {
 protected:
  GridPictureTest() { Show(GCM_SETROWHIGHLIGHT, 0); }

  // Sends the message, and paints.
  void Show(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    Send(grid_, message, wParam, lParam);
    Flow();
  }
  std::vector<COLORREF> Pixels(const RECT& area) const {
    std::vector<COLORREF> pixels;
    const HDC context = ::GetDC(grid_);
    for (int y = area.top; y < area.bottom; ++y) {
      for (int x = area.left; x < area.right; ++x)
        pixels.push_back(::GetPixel(context, x, y));
    }
    ::ReleaseDC(grid_, context);
    return pixels;
  }
  COLORREF PixelAt(int x, int y) const { return Pixels({x, y, x + 1, y + 1}).front(); }
  // All that the grid shows.
  std::vector<COLORREF> Picture() const {
    RECT area{};
    ::GetClientRect(grid_, &area);
    return Pixels(area);
  }
  // What stands within a cell's lines.
  static RECT CellArea(int row, int col) {
    return {50 * col + 3, 21 * row + 3, 50 * col + 47, 21 * row + 18};
  }
  bool HasInk(const RECT& area, COLORREF background = kWhite) const {
    const auto pixels = Pixels(area);
    return std::ranges::any_of(pixels, [=](COLORREF each) { return each != background; });
  }
};

TEST_F(GridPictureTest, EachLookIsSeen) {
  SendCell(grid_, GCM_SETPROTECT, {2, 2}, 1);
  ::SetFocus(host_);
  const auto focus = [&] { ::SetFocus(grid_); };
  const auto set = [&](UINT message, WPARAM value) {
    return [=, this] { Send(grid_, message, value); };
  };
  const std::tuple<const char*, std::function<void()>, QPoint, COLORREF> cases[] = {
      {"protected", set(GCM_SETPROTECTCOLOR, kGrey), {125, 52}, kGrey},
      {"unprotected", set(GCM_SETUNPROTECTCOLOR, kPink), {175, 52}, kPink},
      {"line", set(GCM_SETGRIDLINECOLOR, 0x0000FF), {150, 52}, 0x0000FF},
      {"cursor", set(GCM_SETCURSORCOLOR, 0x00FF00), {51, 31}, kPink ^ 0x00FF00},
      {"cursor's row", set(GCM_SETROWHIGHLIGHT, 1), {175, 31}, 0xC8C8C8},
      {"other row", set(GCM_SETROWHIGHLIGHT, 1), {175, 52}, kPink},
      {"cursor's row with the focus", focus, {175, 31}, 0x800000},
      {"highlight", set(GCM_SETHIGHLIGHTCOLOR, 0x008000), {175, 31}, 0x008000},
      {"row that is left", [&] { Type(grid_, Qt::Key_Down); }, {175, 31}, kPink},
      {"last column", set(GCM_SETSIZE, 2), {300, 31}, kPink},
      {"not to the edge", set(GCM_SETEXTENDLASTCOL, 0), {300, 31}, kGrey},
      {"below the rows", set(GCM_REFRESH, 0), {25, 150}, kGrey},
      {"title", set(GCM_SETTITLEHEIGHT, 30), {95, 45}, ::GetSysColor(COLOR_BTNFACE)},
  };
  for (const auto& [what, act, place, colour] : cases) {
    act();
    Flow();
    EXPECT_EQ(PixelAt(place.x(), place.y()), colour) << what;
  }
}

TEST_F(GridPictureTest, TextsNumbersCheckBoxesAndHeadingsLeaveInk) {
  const wchar_t* const texts[] = {L"i", L"1", L"TRUE", L"FALSE"};
  for (int row = 1; row <= 4; ++row)
    Store(grid_, {row, 2}, texts[row - 1]);
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
  for (const bool shown : {true, false}) {
    Send(grid_, GCM_SETROWNUMBERS, shown);
    Show(GCM_SETCOLLETTERS, shown);
    EXPECT_EQ(HasInk(CellArea(0, 2), face), shown);
    EXPECT_EQ(HasInk(CellArea(2, 0), face), shown);
    EXPECT_FALSE(HasInk(CellArea(0, 0), face));
  }
  for (int row = 1; row <= 5; ++row)
    EXPECT_EQ(HasInk(CellArea(row, 2)), row <= 4) << row;
  EXPECT_NE(Pixels(CellArea(3, 2)), Pixels(CellArea(4, 2)));
  EXPECT_FALSE(HasInk({115, 23, 149, 40})) << "a text stands at the left";
  EXPECT_FALSE(HasInk({102, 44, 135, 61})) << "a number stands at the right";
}

TEST_F(GridPictureTest, TheParentDrawsGraphicCells) {
  std::vector<LRESULT> indexes;
  const auto grey = static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
  onNotified = [&](int code, LPARAM value) {
    if (code != GCN_DRAWGRAPHIC) return;
    indexes.push_back(Send(grid_, GCM_GETGRAPHICINDEX));
    const HDC context = ::GetDC(grid_);
    ::FillRect(context, reinterpret_cast<const RECT*>(value), grey);
    ::ReleaseDC(grid_, context);
  };
  Store(grid_, {2, 2}, L"~17");
  Flow();
  EXPECT_EQ(indexes, std::vector<LRESULT>{17});
  EXPECT_EQ(PixelAt(102, 44), kGrey);
  EXPECT_EQ(PixelAt(101, 44), kWhite);
  EXPECT_EQ(PixelAt(147, 60), kGrey);
  EXPECT_EQ(PixelAt(148, 60), kWhite);
}

TEST_F(GridPictureTest, TheCursorsFrameInvertsTheCellAndLeavesNothingBehind) {
  Store(grid_, {1, 1}, L"one");
  ::SetFocus(grid_);
  Flow();
  const auto before = Picture();
  EXPECT_EQ(PixelAt(50, 31), 0xFFFFFFu ^ 0xDCDCDCu);
  EXPECT_EQ(PixelAt(51, 31), 0x000000u);
  const RECT half{60, 25, 80, 200};
  const auto type = [&](Qt::Key key) { return [=, this] { Type(grid_, key); }; };
  const std::function<void()> returning[][2] = {
      {type(Qt::Key_Down), type(Qt::Key_Up)},
      {type(Qt::Key_Right), type(Qt::Key_Left)},
      {type(Qt::Key_PageDown), type(Qt::Key_PageUp)},
      {[&] { Show(WM_VSCROLL, SB_LINEDOWN); }, [&] { Show(WM_VSCROLL, SB_LINEUP); }},
      {[&] { Show(GCM_SETCURSORCOLOR, 0); }, [&] { Show(GCM_SETCURSORCOLOR, kWhite); }},
  };
  for (const auto& [away, back] : returning) {
    away();
    EXPECT_NE(Picture(), before);
    back();
    ::InvalidateRect(grid_, &half, FALSE);
    Flow();
    EXPECT_EQ(Picture(), before);
  }
}

TEST_F(GridPictureTest, WhatIsTypedIsSeenInABoxUntilItIsGivenUp) {
  ::SetFocus(grid_);
  Show(GCM_SETEDITABLE, 1);
  const auto before = Picture();
  Type(grid_, "88");
  EXPECT_EQ(PixelAt(52, 31), 0x000000u);
  EXPECT_TRUE(HasInk(CellArea(1, 1)));
  const auto typed = Picture();
  Show(GCM_REFRESH);
  EXPECT_EQ(Picture(), typed);
  Type(grid_, Qt::Key_Escape);
  EXPECT_EQ(Picture(), before);
}

TEST_F(GridPictureTest, ADisabledGridsHeadingsAreGrey) {
  const auto before = Pixels(CellArea(0, 2));
  for (const bool enabled : {false, true}) {
    ::EnableWindow(grid_, enabled);
    Flow();
    EXPECT_EQ(Pixels(CellArea(0, 2)) == before, enabled);
  }
}

}  // namespace
}  // namespace quillgate
