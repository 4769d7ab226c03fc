#include "grid/grid_layout.h"

#include <gtest/gtest.h>

#include <tuple>

#include "recording_grid_system.h"

namespace quillgate {
namespace {

// 10 of title, 20 of headings, rows of 15; columns at 30: 40, hidden, 25, 50, 60, hidden;
// the next would be 50 wide.
GridSlot SlotAt(std::int32_t homeRow, std::int32_t homeCol) {
  GridSlot slot;
  slot.clientWidth = 200;
  slot.clientHeight = 100;
  slot.titleHeight = 10;
  slot.headerHeight = 20;
  slot.rowHeight = 15;
  slot.rows = 50;
  slot.cols = 6;
  slot.homeRow = homeRow;
  slot.homeCol = homeCol;
  slot.colWidth = {30, 40, 0, 25, 50, 60, 0, 50};
  return slot;
}

TEST(GridLayout, OnlyCellsPastTheUpperLimitsAreInvalid) {
  for (const GridCell valid : {GridCell{0, 0}, {32000, 256}, {-5, 1}, {1, -5}})
    EXPECT_TRUE(IsValid(valid)) << valid;
  for (const GridCell invalid : {GridCell{32001, 1}, {1, 257}, {-5, 257}})
    EXPECT_FALSE(IsValid(invalid)) << invalid;
}

TEST(GridLayout, EachCellStandsBelowTheBandsAndAfterTheShownColumnsBeforeIt) {
  const std::tuple<std::int32_t, std::int32_t, GridCell, GridRect> cases[] = {
      {1, 1, {0, 0}, {0, 10, 30, 30}},   {1, 1, {0, 1}, {30, 10, 70, 30}},
      {1, 1, {1, 0}, {0, 30, 30, 45}},   {1, 1, {1, 1}, {30, 30, 70, 45}},
      {1, 1, {2, 2}, {70, 45, 70, 60}},  {1, 1, {1, 3}, {70, 30, 95, 45}},
      {4, 3, {4, 3}, {30, 30, 55, 45}},  {4, 3, {6, 4}, {55, 60, 105, 75}},
      {4, 3, {0, 4}, {55, 10, 105, 30}},  // headings do not scroll with the rows
      {4, 3, {4, 0}, {0, 30, 30, 45}},    // nor the heading column with the columns
      {4, 3, {3, 3}, {30, 15, 55, 30}},   // above the first row shown
  };
  for (const auto& [homeRow, homeCol, cell, rect] : cases)
    EXPECT_EQ(CellRect(SlotAt(homeRow, homeCol), cell), rect) << cell;
}

TEST(GridLayout, OnlyTheLastShownColumnReachesToTheRightEdge) {
  const struct {
    const char* what;
    std::int32_t homeCol, col, width6;
    bool extends;
    std::int32_t right;
  } cases[] = {
      {"the last one with a width", 3, 5, 0, true, 200},
      {"switched off", 3, 5, 0, false, 165},
      {"not the last", 3, 4, 0, true, 105},
      {"a later one has a width", 3, 5, 9, true, 165},
      {"the later one itself", 3, 6, 9, true, 200},
      {"hidden, after the last", 3, 6, 0, true, 165},
      {"ends right of the edge", 1, 5, 0, true, 205},
      {"past the columns", 3, 7, 0, true, 215},
      {"before the first shown", 6, 5, 0, true, 90},
      {"the heading column", 6, 0, 0, true, 30},
  };
  for (const auto& each : cases) {
    GridSlot slot = SlotAt(1, each.homeCol);
    slot.colWidth[6] = each.width6;
    slot.extendLastCol = each.extends;
    EXPECT_EQ(CellRect(slot, {1, each.col}).right, each.right) << each.what;
  }
}

// Every pixel, under every place of the scroll bars, and with a shown and a hidden last column.
TEST(GridLayout, TheCellUnderAPointIsTheOneThatCoversIt) {
  for (std::int32_t turn = 0; turn < 24; ++turn) {
    const std::int32_t home = 1 + turn % 6;
    GridSlot slot = SlotAt(home, home);
    slot.extendLastCol = turn < 12;
    slot.cols = turn % 12 < 6 ? 5 : 6;
    slot.rows = 8;
    for (std::int32_t x = 0; x < slot.clientWidth; ++x) {
      std::int32_t covering = -1;
      for (std::int32_t col = 0; col <= slot.cols; ++col) {
        const GridRect rect = CellRect(slot, {1, col});
        if ((col == 0 || col >= home) && x >= rect.left && x < rect.right) covering = col;
      }
      ASSERT_EQ(ColAt(slot, x), covering) << x << " from column " << home;
    }
    for (std::int32_t y = slot.titleHeight + 1; y < slot.clientHeight; ++y) {
      std::int32_t covering = y < slot.titleHeight + slot.headerHeight ? 0 : -1;
      for (std::int32_t row = home; row <= slot.rows; ++row) {
        const GridRect rect = CellRect(slot, {row, 1});
        if (y >= rect.top && y < rect.bottom) covering = row;
      }
      ASSERT_EQ(RowAt(slot, y), covering) << y << " from row " << home;
    }
  }
}

TEST(GridLayout, PointsOutsideOfTheCellsHaveTheirRowsAndColumnsToo) {
  GridSlot slot = SlotAt(7, 3);
  const std::pair<GridPoint, GridCell> points[] = {
      {{-3, -7}, {-1, 0}}, {{164, 10}, {-1, 5}}, {{900, 11}, {0, 5}}, {{900, 500}, {38, 5}}};
  for (const auto& [point, cell] : points)
    EXPECT_EQ(CellAt(slot, point), cell) << point;
  slot.rows = 5;  // scrolled past them
  EXPECT_EQ(RowAt(slot, 30), -1);
  slot.titleHeight = 0;
  EXPECT_EQ(RowAt(slot, 0), -1) << "the topmost pixel";
  EXPECT_EQ(RowAt(slot, 1), 0);
  slot.headerHeight = 0;
  slot.homeRow = 1;
  EXPECT_EQ(RowAt(slot, 1), 1);
}

TEST(GridLayout, RowsAndColumnsAreVisibleAsLongAsAPixelOfThemIs) {
  const struct {
    std::int32_t clientHeight, homeRow, rows, first, last, fit;
  } rows[] = {
      {90, 1, 50, 1, 4, 4}, {91, 1, 50, 1, 5, 4}, {105, 1, 50, 1, 5, 5}, {105, 7, 9, 7, 9, 5},
      {31, 1, 50, 1, 1, 0}, {30, 1, 50, 1, 0, 0}, {0, 1, 50, 1, 0, 0},   {105, 10, 9, 1, 0, 5},
  };
  for (const auto& each : rows) {
    GridSlot slot = SlotAt(each.homeRow, 1);
    slot.clientHeight = each.clientHeight;
    slot.rows = each.rows;
    EXPECT_EQ(VisibleRows(slot).first, each.first) << each.clientHeight;
    EXPECT_EQ(VisibleRows(slot).last, each.last) << each.clientHeight;
    EXPECT_EQ(RowsThatFit(slot), each.fit) << each.clientHeight;
  }
  const struct {
    std::int32_t clientWidth, homeCol, first, last;
  } cols[] = {{145, 1, 1, 4}, {146, 1, 1, 5}, {205, 1, 1, 5}, {206, 1, 1, 6},
              {31, 1, 1, 1},  {30, 1, 1, 0},  {31, 4, 4, 4},  {200, 7, 1, 0}};
  for (const auto& each : cols) {
    GridSlot slot = SlotAt(1, each.homeCol);
    slot.clientWidth = each.clientWidth;
    EXPECT_EQ(VisibleCols(slot).first, each.first) << each.clientWidth;
    EXPECT_EQ(VisibleCols(slot).last, each.last) << each.clientWidth;
  }
}

TEST(GridLayout, HorizontalPositionsCountShownColumns) {
  GridSlot slot = SlotAt(1, 1);
  EXPECT_EQ(LastHorizontalPosition(slot), 4);
  const std::int32_t positions[] = {0, 1, 1, 2, 3, 4, 4, 4};
  for (std::int32_t col = 0; col <= 7; ++col)
    EXPECT_EQ(PositionOfCol(slot, col), positions[col]) << col;
  const std::int32_t cols[] = {-1, 1, 3, 4, 5, 4, 5};  // a position less one where there is none
  for (std::int32_t position = 0; position <= 6; ++position)
    EXPECT_EQ(ColAtPosition(slot, position), cols[position]) << position;
  slot.cols = 5;  // all shown but one
  EXPECT_EQ(PositionOfCol(slot, 5), 4);
  EXPECT_EQ(ColAtPosition(slot, 4), 5);
}

TEST(GridLayout, WithoutShownColumnsTheBarStillHasAPlace) {
  GridSlot slot = SlotAt(1, 1);
  slot.colWidth = {};
  EXPECT_EQ(LastHorizontalPosition(slot), 1);
  slot.homeCol = ColAtPosition(slot, 1);  // 0
  slot.colWidth[0] = 30;
  EXPECT_EQ(CellRect(slot, {1, 1}), (GridRect{30, 30, 30, 45}));
  EXPECT_EQ(ColAt(slot, 30), -1);
  EXPECT_EQ(VisibleCols(slot).first, 1);
}

TEST(GridLayout, RowsWithoutAHeightAreOnePixelHigh) {
  GridSlot slot = SlotAt(1, 1);
  slot.rows = 500;
  slot.rowHeight = 0;
  EXPECT_EQ(RowAt(slot, 30), 1);
  EXPECT_EQ(RowsThatFit(slot), 70);
  EXPECT_EQ(VisibleRows(slot).last, 70);
}

}  // namespace
}  // namespace quillgate
