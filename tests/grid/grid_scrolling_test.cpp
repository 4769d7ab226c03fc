#include "grid/grid_scrolling.h"

#include "grid/grid_cursor.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

constexpr GridBar kVertical = GridBar::kVertical;
constexpr GridBar kHorizontal = GridBar::kHorizontal;

// Thirteen rows fit, and seven columns.
class GridScrollingTest : public GridFixture {
 protected:
  GridScrolling scrolling_{slot_, system_};
};

TEST_F(GridScrollingTest, BarsAreShownJustWhenTheyAreNeeded) {
  const struct {
    const char* what;
    GridSize client;
    std::uint32_t rows;
    bool vertical, horizontal;
  } cases[] = {
      // Seven rows and three columns need 200 x 168 pixels.
      {"just room", {200, 168}, 7, false, false},
      {"one line too low", {217, 167}, 7, true, false},
      {"one column of pixels too narrow", {199, 185}, 7, false, true},
      {"the vertical bar takes the columns' room", {216, 167}, 7, true, true},
      {"the horizontal bar takes the rows' room", {199, 184}, 7, true, true},
      {"both by themselves", {100, 100}, 7, true, true},
      {"room again after both", {200, 168}, 7, false, false},
      {"no rows", {300, 21}, 0, false, false},
  };
  system_.barSize = {17, 17};
  for (const auto& each : cases) {
    system_.clientSize = each.client;
    grid_.SetSize(each.rows, 3);
    EXPECT_EQ(system_.bars[kVertical].isShown, each.vertical) << each.what;
    EXPECT_EQ(system_.bars[kHorizontal].isShown, each.horizontal) << each.what;
    EXPECT_EQ(slot_.clientWidth, each.client.width - (each.vertical ? 17 : 0)) << each.what;
    EXPECT_EQ(slot_.clientHeight, each.client.height - (each.horizontal ? 17 : 0)) << each.what;
  }
}

TEST_F(GridScrollingTest, RangesCountRowsAndShownColumnsAndHiddenBarsGetNone) {
  slot_.colWidth[3] = slot_.colWidth[8] = 0;
  PutHome({5, 4});
  scrolling_.UpdateBars();
  EXPECT_EQ(Take({"ShowBar", "SetBar"}),
            "ShowBar vertical 1; ShowBar horizontal 1; SetBarRange vertical 88; "
            "SetBarRange horizontal 8; SetBarPosition vertical 5; SetBarPosition horizontal 3");
  slot_.cols = 3;
  scrolling_.UpdateBars();
  EXPECT_EQ(Take({"ShowBar", "SetBarRange"}),
            "ShowBar vertical 1; ShowBar horizontal 0; SetBarRange vertical 88");
  slot_.rows = 3;
  slot_.cols = 10;
  scrolling_.UpdateBars();
  EXPECT_EQ(Take({"ShowBar", "SetBarRange"}),
            "ShowBar vertical 0; ShowBar horizontal 1; SetBarRange horizontal 8");
}

TEST_F(GridScrollingTest, WhatNoBarLeadsToIsNotShownFirst) {
  PutHome({60, 9});
  const struct {
    std::uint32_t rows;
    std::int32_t cols;
    GridCell home;
  } cases[] = {{40, 8, {28, 8}}, {13, 8, {1, 8}}, {13, 7, {1, 1}}};
  for (const auto& each : cases) {
    grid_.SetSize(each.rows, each.cols);
    EXPECT_EQ(Home(), each.home);
  }
}

TEST_F(GridScrollingTest, RequestsMoveHomeWithinTheBars) {
  const char* const kPlain = "TakeFocus; InvalidateAll";
  const char* const kErased = "TakeFocus; InvalidateAll erase";
  const struct {
    const char* what;
    GridBar bar;
    GridScroll request;
    std::int32_t place;
    GridCell before, after;
    const char* calls;
  } cases[] = {
      // Column 3 is hidden, so column 4 has position 3. The last positions are 88 and 9.
      {"line on", kVertical, GridScroll::kLineOn, 0, {1, 1}, {2, 1}, kPlain},
      {"line back", kVertical, GridScroll::kLineBack, 0, {2, 1}, {1, 1}, kPlain},
      {"line back at the top", kVertical, GridScroll::kLineBack, 0, {1, 1}, {1, 1}, "TakeFocus"},
      {"page on", kVertical, GridScroll::kPageOn, 0, {2, 1}, {15, 1}, kPlain},
      {"page back", kVertical, GridScroll::kPageBack, 0, {20, 1}, {7, 1}, kPlain},
      {"page back to the top", kVertical, GridScroll::kPageBack, 0, {9, 1}, {1, 1}, kPlain},
      {"line on to the end", kVertical, GridScroll::kLineOn, 0, {87, 1}, {88, 1}, kErased},
      {"page on past the end", kVertical, GridScroll::kPageOn, 0, {80, 1}, {88, 1}, kErased},
      {"thumb", kVertical, GridScroll::kThumb, 33, {1, 1}, {33, 1}, kPlain},
      {"thumb past the end", kVertical, GridScroll::kThumb, 900, {1, 1}, {88, 1}, kErased},
      {"thumb before the beginning", kVertical, GridScroll::kThumb, -4, {7, 1}, {1, 1}, kPlain},
      {"past a hidden column", kHorizontal, GridScroll::kLineOn, 0, {1, 2}, {1, 4}, kPlain},
      {"back past a hidden column", kHorizontal, GridScroll::kLineBack, 0, {1, 4}, {1, 2}, kPlain},
      {"a page is a column", kHorizontal, GridScroll::kPageOn, 0, {1, 4}, {1, 5}, kPlain},
      {"and back", kHorizontal, GridScroll::kPageBack, 0, {1, 5}, {1, 4}, kPlain},
      {"last column", kHorizontal, GridScroll::kLineOn, 0, {1, 9}, {1, 10}, kErased},
      {"thumb to a column", kHorizontal, GridScroll::kThumb, 3, {1, 1}, {1, 4}, kPlain},
      {"thumb past the last", kHorizontal, GridScroll::kThumb, 99, {1, 1}, {1, 10}, kErased},
  };
  slot_.colWidth[3] = 0;
  for (const auto& each : cases) {
    PutHome(each.before);
    if (each.bar == kVertical)
      scrolling_.OnVertical(each.request, each.place);
    else
      scrolling_.OnHorizontal(each.request, each.place);
    EXPECT_EQ(Home(), each.after) << each.what;
    EXPECT_EQ(system_.bars[kVertical].position, each.after.row) << each.what;
    EXPECT_EQ(system_.bars[kHorizontal].position, each.after.col - (each.after.col > 3 ? 1 : 0))
        << each.what;
    EXPECT_EQ(Take({"TakeFocus", "InvalidateAll"}), each.calls) << each.what;
  }
}

TEST_F(GridScrollingTest, TakingTheFocusScrollsToTheCursorFirst) {
  slot_.cursorRow = 50;
  When("TakeFocus", [](Grid& grid) { grid.OnFocusGained(); });
  scrolling_.OnVertical(GridScroll::kLineOn, 0);
  EXPECT_EQ(slot_.homeRow, 50 - 13 + 1 + 1);
}

TEST_F(GridScrollingTest, AGridWithoutAnythingToScrollStaysAtItsBeginning) {
  slot_.rows = 0;
  slot_.colWidth.fill(0);
  for (const GridScroll request :
       {GridScroll::kLineBack, GridScroll::kPageOn, GridScroll::kThumb}) {
    scrolling_.OnVertical(request, 7);
    scrolling_.OnHorizontal(request, 7);
    EXPECT_EQ(Home(), (GridCell{1, 1}));
    EXPECT_EQ(system_.bars[kHorizontal].position, 1);
  }
}

TEST_F(GridScrollingTest, TheCursorIsBroughtIntoViewByTheLeastThatShowsItWhole) {
  const struct {
    const char* what;
    GridCell home, cursor, after;
  } cases[] = {
      // There is room for 350 pixels of columns. Column 5 is 100 wide, 6 and 9 are hidden, 8 is
      // wider than the window.
      {"shown", {3, 2}, {4, 3}, {3, 2}},
      {"row above", {10, 1}, {4, 1}, {4, 1}},
      {"last whole row", {3, 1}, {15, 1}, {3, 1}},
      {"row that is cut", {3, 1}, {16, 1}, {4, 1}},
      {"row far below", {1, 1}, {100, 1}, {88, 1}},
      {"column to the left", {1, 5}, {1, 3}, {1, 3}},
      {"last whole column", {1, 1}, {1, 7}, {1, 1}},
      {"too wide a column", {1, 1}, {1, 8}, {1, 8}},
      {"behind the wide one, not from a hidden one", {1, 1}, {1, 10}, {1, 10}},
      {"past the last", {1, 1}, {101, 11}, {88, 10}},
  };
  slot_.colWidth[5] = 100;
  slot_.colWidth[6] = slot_.colWidth[9] = 0;
  slot_.colWidth[8] = 500;
  for (const auto& each : cases) {
    PutHome(each.home);
    PutCursor(each.cursor);
    scrolling_.BringCursorIntoView();
    EXPECT_EQ(Home(), each.after) << each.what;
    EXPECT_EQ(Take({"InvalidateAll"}), each.home == each.after ? "" : "InvalidateAll") << each.what;
    EXPECT_EQ(system_.bars[kVertical].position, each.after.row) << each.what;
  }
}

TEST_F(GridScrollingTest, AColumnThatIsCutTakesTheRoomOfThoseBefore) {
  slot_.cursorCol = 7;
  for (const auto& [width, home] : {std::pair(400, 1), {399, 2}}) {
    slot_.clientWidth = width;
    scrolling_.BringCursorIntoView();
    EXPECT_EQ(slot_.homeCol, home);
  }
}

TEST_F(GridScrollingTest, ARowHigherThanTheWindowIsShownFromItsTop) {
  slot_.rowHeight = 1'000;
  for (const std::int32_t row : {40, 39}) {
    slot_.cursorRow = row;
    scrolling_.BringCursorIntoView();
    EXPECT_EQ(slot_.homeRow, row);
  }
  scrolling_.OnVertical(GridScroll::kThumb, 101);
  EXPECT_EQ(slot_.homeRow, 100);
}

}  // namespace
}  // namespace quillgate
