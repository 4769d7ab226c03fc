// What is to be seen of a grid. Cells are 50 wide and 21 high, as are the headings.
#include "grid_host.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kGrey = 0x808080;
constexpr COLORREF kPink = 0xC080FF;

class GridPictureTest : public GridHostTest {
 protected:
  GridPictureTest() : grid_(MakeGrid()) {
    Send(grid_, GCM_SETROWHIGHLIGHT, 0);
    Flow();
  }

  // All that the grid shows.
  std::vector<COLORREF> Picture() const {
    RECT area{};
    ::GetClientRect(grid_, &area);
    return Pixels(grid_, area);
  }
  // What stands within a cell's lines.
  static RECT CellArea(std::int32_t row, std::int32_t col) {
    return {50 * col + 3, 21 * row + 3, 50 * col + 47, 21 * row + 18};
  }
  bool HasInk(const RECT& area, COLORREF background = kWhite) const {
    const auto pixels = Pixels(grid_, area);
    return std::any_of(pixels.begin(), pixels.end(),
                       [=](COLORREF each) { return each != background; });
  }

  HWND grid_;
};

TEST_F(GridPictureTest, CellsHaveTheColourOfTheirProtectionAndTheRestIsGrey) {
  SendCell(grid_, GCM_SETPROTECT, {2, 2}, 1);
  Send(grid_, GCM_SETPROTECTCOLOR, kGrey);
  Send(grid_, GCM_SETUNPROTECTCOLOR, kPink);
  Send(grid_, GCM_SETGRIDLINECOLOR, 0x0000FF);
  Flow();
  EXPECT_EQ(PixelAt(grid_, 125, 52), kGrey);
  EXPECT_EQ(PixelAt(grid_, 175, 52), kPink);
  EXPECT_EQ(PixelAt(grid_, 150, 52), 0x0000FFu);
  EXPECT_EQ(PixelAt(grid_, 125, 63), 0x0000FFu);
  Send(grid_, GCM_SETSIZE, 2, 2);
  for (const bool extends : {false, true}) {
    Send(grid_, GCM_SETEXTENDLASTCOL, extends);
    Flow();
    EXPECT_EQ(PixelAt(grid_, 300, 31), extends ? kPink : kGrey);
    EXPECT_EQ(PixelAt(grid_, 75, 150), kGrey);
  }
}

TEST_F(GridPictureTest, TheCursorsRowStandsOutByTheFocus) {
  Send(grid_, GCM_SETROWHIGHLIGHT, 1);
  ::SetFocus(Host());
  Flow();
  EXPECT_EQ(PixelAt(grid_, 175, 31), 0xC8C8C8u);
  EXPECT_EQ(PixelAt(grid_, 175, 52), kWhite);
  ::SetFocus(grid_);
  Flow();
  EXPECT_EQ(PixelAt(grid_, 175, 31), 0x800000u);
  Type(grid_, Qt::Key_Down);
  EXPECT_EQ(PixelAt(grid_, 175, 31), kWhite);
  EXPECT_EQ(PixelAt(grid_, 175, 52), 0x800000u);
}

TEST_F(GridPictureTest, TextsNumbersCheckBoxesAndHeadingsLeaveInk) {
  const wchar_t* const texts[] = {L"i", L"1", L"TRUE", L"FALSE"};
  for (std::int32_t row = 1; row <= 4; ++row)
    Store(grid_, {row, 2}, texts[row - 1]);
  Flow();
  for (std::int32_t row = 1; row <= 5; ++row)
    EXPECT_EQ(HasInk(CellArea(row, 2)), row <= 4) << row;
  EXPECT_NE(Pixels(grid_, CellArea(3, 2)), Pixels(grid_, CellArea(4, 2)));
  // Texts stand at the left and numbers at the right.
  EXPECT_FALSE(HasInk({115, 23, 149, 40}));
  EXPECT_FALSE(HasInk({102, 44, 135, 61}));
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
  for (const bool shown : {true, false}) {
    Send(grid_, GCM_SETROWNUMBERS, shown);
    Send(grid_, GCM_SETCOLLETTERS, shown);
    Flow();
    EXPECT_EQ(HasInk(CellArea(0, 2), face), shown);
    EXPECT_EQ(HasInk(CellArea(2, 0), face), shown);
    EXPECT_FALSE(HasInk(CellArea(0, 0), face));
  }
}

TEST_F(GridPictureTest, TheParentDrawsGraphicCells) {
  std::vector<LRESULT> indexes;
  onTold = [&](HWND grid, int code, LPARAM value) {
    if (code != GCN_DRAWGRAPHIC) return;
    indexes.push_back(Send(grid, GCM_GETGRAPHICINDEX));
    const HDC context = ::GetDC(grid);
    const HBRUSH brush = ::CreateSolidBrush(kPink);
    ::FillRect(context, reinterpret_cast<const RECT*>(value), brush);
    ::DeleteObject(brush);
    ::ReleaseDC(grid, context);
  };
  Store(grid_, {2, 2}, L"~17");
  Flow();
  EXPECT_THAT(indexes, ElementsAre(17));
  EXPECT_EQ(PixelAt(grid_, 102, 44), kPink);
  EXPECT_EQ(PixelAt(grid_, 101, 44), kWhite);
  EXPECT_EQ(PixelAt(grid_, 147, 60), kPink);
  EXPECT_EQ(PixelAt(grid_, 148, 60), kWhite);
  onTold = nullptr;
}

TEST_F(GridPictureTest, TheCursorsFrameInvertsTheCellAndLeavesNothingBehind) {
  Store(grid_, {1, 1}, L"one");
  Store(grid_, {2, 2}, L"two");
  ::SetFocus(grid_);
  Flow();
  const auto before = Picture();
  EXPECT_EQ(PixelAt(grid_, 50, 31), 0xFFFFFFu ^ 0xDCDCDCu);
  EXPECT_EQ(PixelAt(grid_, 51, 31), 0x000000u);
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up, Qt::Key_PageDown,
                            Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp})
    Type(grid_, key);
  EXPECT_EQ(Picture(), before);
  Send(grid_, WM_VSCROLL, SB_LINEDOWN);
  Flow();
  Send(grid_, WM_VSCROLL, SB_LINEUP);
  EXPECT_NE(Picture(), before);
  Flow();
  EXPECT_EQ(Picture(), before);
  // Parts that are painted anew leave it whole.
  const RECT half{60, 25, 80, 200};
  ::InvalidateRect(grid_, &half, FALSE);
  Flow();
  EXPECT_EQ(Picture(), before);
  Send(grid_, GCM_REFRESH);
  Flow();
  EXPECT_EQ(Picture(), before);
  Send(grid_, GCM_SETCURSORCOLOR, 0x00FF00);
  Flow();
  EXPECT_EQ(PixelAt(grid_, 51, 31), 0xFF00FFu);
}

TEST_F(GridPictureTest, WhatIsTypedIsSeenInABoxUntilItIsGivenUp) {
  ::SetFocus(grid_);
  Send(grid_, GCM_SETEDITABLE, 1);
  Flow();
  const auto before = Picture();
  Type(grid_, QString("88"));
  EXPECT_EQ(PixelAt(grid_, 52, 31), 0x000000u);
  EXPECT_TRUE(HasInk(CellArea(1, 1)));
  const auto typed = Picture();
  Send(grid_, GCM_REFRESH);
  Flow();
  EXPECT_EQ(Picture(), typed);
  Type(grid_, Qt::Key_Escape);
  EXPECT_EQ(Picture(), before);
}

TEST_F(GridPictureTest, ADisabledGridsHeadingsAreGrey) {
  const auto before = Pixels(grid_, CellArea(0, 2));
  ::EnableWindow(grid_, FALSE);
  Flow();
  EXPECT_NE(Pixels(grid_, CellArea(0, 2)), before);
  ::EnableWindow(grid_, TRUE);
  Flow();
  EXPECT_EQ(Pixels(grid_, CellArea(0, 2)), before);
}

}  // namespace
}  // namespace quillgate
