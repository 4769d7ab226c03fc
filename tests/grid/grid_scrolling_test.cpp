#include "grid/grid_scrolling.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "grid/grid_cursor.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// Rows of 21 pixels below a heading row of 21: 13 fit. Columns of 50 beside a heading of 50.
class GridScrollingTest : public GridFixture {
 protected:
  GridCell Home() const { return {slot_.homeRow, slot_.homeCol}; }
};

TEST_F(GridScrollingTest, BarsAreShownJustWhenTheyAreNeeded) {
  struct Case {
    const char* what;
    GridSize client;
    std::int32_t rows;
    std::int32_t cols;
    bool vertical;
    bool horizontal;
  };
  // Seven rows and three columns need 200 x 168 pixels.
  const Case cases[] = {
      {"room to spare", {300, 300}, 7, 3, false, false},
      {"just room", {200, 168}, 7, 3, false, false},
      {"one line too low", {217, 167}, 7, 3, true, false},
      {"one column of pixels too narrow", {199, 185}, 7, 3, false, true},
      {"the vertical bar takes the columns' room", {216, 167}, 7, 3, true, true},
      {"the horizontal bar takes the rows' room", {199, 184}, 7, 3, true, true},
      {"both by themselves", {100, 100}, 7, 3, true, true},
      {"room again after both", {200, 168}, 7, 3, false, false},
      {"no rows", {300, 21}, 0, 3, false, false},
  };
  system_.barSize = {17, 17};
  for (const Case& each : cases) {
    system_.clientSize = each.client;
    grid_.SetSize(static_cast<std::uint32_t>(each.rows), each.cols);
    EXPECT_EQ(system_.barsShown[GridBar::kVertical], each.vertical) << each.what;
    EXPECT_EQ(system_.barsShown[GridBar::kHorizontal], each.horizontal) << each.what;
    EXPECT_EQ(slot_.clientWidth, each.client.width - (each.vertical ? 17 : 0)) << each.what;
    EXPECT_EQ(slot_.clientHeight, each.client.height - (each.horizontal ? 17 : 0)) << each.what;
  }
}

TEST_F(GridScrollingTest, TheVerticalBarComesFirstAndHiddenBarsGetNoRange) {
  slot_.cols = 3;
  GridScrolling(slot_, system_).UpdateBars();
  EXPECT_THAT(Take({"ShowBar", "SetBarRange"}),
              ElementsAre("ShowBar vertical 1", "ShowBar horizontal 0", "SetBarRange vertical 88"));
  slot_.rows = 3;
  slot_.cols = 10;
  GridScrolling(slot_, system_).UpdateBars();
  EXPECT_THAT(
      Take({"ShowBar", "SetBarRange"}),
      ElementsAre("ShowBar vertical 0", "ShowBar horizontal 1", "SetBarRange horizontal 10"));
}

TEST_F(GridScrollingTest, RangesCountRowsAndShownColumns) {
  slot_.colWidth[3] = slot_.colWidth[8] = 0;
  slot_.homeRow = 5;
  slot_.homeCol = 4;
  GridScrolling(slot_, system_).UpdateBars();
  EXPECT_EQ(system_.barRanges[GridBar::kVertical], 100 - 13 + 1);
  EXPECT_EQ(system_.barPositions[GridBar::kVertical], 5);
  EXPECT_EQ(system_.barRanges[GridBar::kHorizontal], 8);
  EXPECT_EQ(system_.barPositions[GridBar::kHorizontal], 3);
}

TEST_F(GridScrollingTest, WhatNoBarLeadsToIsNotShownFirst) {
  slot_.homeRow = 60;
  slot_.homeCol = 9;
  grid_.SetSize(40, 8);
  EXPECT_EQ(Home(), (GridCell{28, 8}));
  grid_.SetSize(13, 8);
  EXPECT_EQ(Home(), (GridCell{1, 8}));
  grid_.SetSize(13, 7);
  EXPECT_EQ(Home(), (GridCell{1, 1}));
}

TEST_F(GridScrollingTest, RequestsMoveHomeWithinTheBars) {
  struct Case {
    const char* what;
    GridBar bar;
    GridScroll request;
    std::int32_t place;
    GridCell before;
    GridCell after;
    std::vector<std::string> invalidations;
  };
  const std::vector<std::string> plain{"InvalidateAll"};
  const std::vector<std::string> erased{"InvalidateAll erase"};
  const GridBar vertical = GridBar::kVertical;
  const GridBar horizontal = GridBar::kHorizontal;
  // Column 3 is hidden, so column 4 has position 3. The last positions are 88 and 9.
  const Case cases[] = {
      {"line on", vertical, GridScroll::kLineOn, 0, {1, 1}, {2, 1}, plain},
      {"line back", vertical, GridScroll::kLineBack, 0, {2, 1}, {1, 1}, plain},
      {"line back at the top", vertical, GridScroll::kLineBack, 0, {1, 1}, {1, 1}, {}},
      {"page on", vertical, GridScroll::kPageOn, 0, {2, 1}, {15, 1}, plain},
      {"page back", vertical, GridScroll::kPageBack, 0, {20, 1}, {7, 1}, plain},
      {"page back to the top", vertical, GridScroll::kPageBack, 0, {9, 1}, {1, 1}, plain},
      {"line on to the end", vertical, GridScroll::kLineOn, 0, {87, 1}, {88, 1}, erased},
      {"page on past the end", vertical, GridScroll::kPageOn, 0, {80, 1}, {88, 1}, erased},
      {"thumb", vertical, GridScroll::kThumb, 33, {1, 1}, {33, 1}, plain},
      {"thumb past the end", vertical, GridScroll::kThumb, 900, {1, 1}, {88, 1}, erased},
      {"thumb before the beginning", vertical, GridScroll::kThumb, -4, {7, 1}, {1, 1}, plain},
      {"column on", horizontal, GridScroll::kLineOn, 0, {1, 1}, {1, 2}, plain},
      {"past a hidden column", horizontal, GridScroll::kLineOn, 0, {1, 2}, {1, 4}, plain},
      {"back past a hidden column", horizontal, GridScroll::kLineBack, 0, {1, 4}, {1, 2}, plain},
      {"a page is a column", horizontal, GridScroll::kPageOn, 0, {1, 4}, {1, 5}, plain},
      {"and back", horizontal, GridScroll::kPageBack, 0, {1, 5}, {1, 4}, plain},
      {"last column", horizontal, GridScroll::kLineOn, 0, {1, 9}, {1, 10}, erased},
      {"thumb to a column", horizontal, GridScroll::kThumb, 3, {1, 1}, {1, 4}, plain},
      {"thumb past the last", horizontal, GridScroll::kThumb, 99, {1, 1}, {1, 10}, erased},
  };
  slot_.colWidth[3] = 0;
  for (const Case& each : cases) {
    slot_.homeRow = each.before.row;
    slot_.homeCol = each.before.col;
    GridScrolling scrolling(slot_, system_);
    if (each.bar == vertical)
      scrolling.OnVertical(each.request, each.place);
    else
      scrolling.OnHorizontal(each.request, each.place);
    EXPECT_EQ(Home(), each.after) << each.what;
    EXPECT_EQ(system_.barPositions[vertical], each.after.row) << each.what;
    EXPECT_EQ(system_.calls.front(), "TakeFocus") << each.what;
    EXPECT_EQ(Take({"InvalidateAll"}), each.invalidations) << each.what;
  }
}

TEST_F(GridScrollingTest, TakingTheFocusScrollsToTheCursorFirst) {
  slot_.cursorRow = 50;
  system_.onCall = [&](const std::string& call) {
    if (call == "TakeFocus") Grid(slot_, system_).OnFocusGained();
  };
  grid_.OnVerticalScroll(GridScroll::kLineOn, 0);
  EXPECT_EQ(slot_.homeRow, 50 - 13 + 1 + 1);
}

TEST_F(GridScrollingTest, AGridWithoutAnythingToScrollStaysAtItsBeginning) {
  grid_.Clear();
  for (std::int32_t col = 1; col <= 10; ++col)
    grid_.SetColWidth(static_cast<std::uint32_t>(col), 0);
  for (const GridScroll request :
       {GridScroll::kLineBack, GridScroll::kPageOn, GridScroll::kThumb}) {
    grid_.OnVerticalScroll(request, 7);
    grid_.OnHorizontalScroll(request, 7);
    EXPECT_EQ(Home(), (GridCell{1, 1}));
  }
}

TEST_F(GridScrollingTest, TheCursorIsBroughtIntoViewByTheLeastThatShowsItWhole) {
  struct Case {
    const char* what;
    GridCell home;
    GridCell cursor;
    GridCell after;
  };
  // There is room for 350 pixels of columns. Column 5 is 100 wide, 6 and 9 are hidden, 8 is wider
  // than the window.
  const Case cases[] = {
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
  for (const Case& each : cases) {
    slot_.homeRow = each.home.row;
    slot_.homeCol = each.home.col;
    slot_.cursorRow = each.cursor.row;
    slot_.cursorCol = each.cursor.col;
    GridScrolling(slot_, system_).BringCursorIntoView();
    EXPECT_EQ(Home(), each.after) << each.what;
    EXPECT_EQ(Take({"InvalidateAll"}).size(), each.home == each.after ? 0U : 1U) << each.what;
    EXPECT_EQ(system_.barPositions[GridBar::kVertical], each.after.row) << each.what;
  }
}

TEST_F(GridScrollingTest, AColumnThatIsCutTakesTheRoomOfThoseBefore) {
  GridCursor(slot_, system_).MoveTo({1, 7});
  EXPECT_EQ(slot_.homeCol, 1);
  slot_.clientWidth = 399;
  GridScrolling(slot_, system_).BringCursorIntoView();
  EXPECT_EQ(slot_.homeCol, 2);
}

TEST_F(GridScrollingTest, ARowHigherThanTheWindowIsShownFromItsTop) {
  slot_.rowHeight = 1'000;
  GridCursor(slot_, system_).MoveTo({40, 1});
  EXPECT_EQ(slot_.homeRow, 40);
  GridCursor(slot_, system_).MoveTo({39, 1});
  EXPECT_EQ(slot_.homeRow, 39);
  grid_.OnVerticalScroll(GridScroll::kThumb, 101);
  EXPECT_EQ(slot_.homeRow, 100);
}

}  // namespace
}  // namespace quillgate
