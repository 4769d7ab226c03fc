#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "failing_memory.h"
#include "grid/grid_layout.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr GridFont kCellFont = 1;
constexpr GridFont kHeadingFont = 2;

class GridCellsTest : public GridFixture {
 protected:
  GridCellsTest() {
    slot_.cellFont = kCellFont;
    slot_.headingFont = kHeadingFont;
    slot_.cursorRow = 3;
    slot_.cursorCol = 2;
    system_.charWidths = {{kCellFont, 10}, {kHeadingFont, 12}};
    system_.lineHeights = {{kCellFont, 16}, {kHeadingFont, 18}};
  }
};

TEST_F(GridCellsTest, WhatIsStoredIsFoundWithTypeTextAndTheDefaultsProtection) {
  EXPECT_EQ(grid_.CellText({1, 1}), L"");
  EXPECT_EQ(grid_.TypeNumber({1, 1}), 0);
  EXPECT_EQ(grid_.IsProtected({1, 1}), false);
  const std::pair<const wchar_t*, int> texts[] = {{L"abc", 1},   {L"12.5", 2}, {L"tRUE", 3},
                                                  {L"false", 4}, {L"~7", 5},   {L"", 1}};
  for (const auto& [text, type] : texts) {
    grid_.SetDefaultProtect(type == 2);
    EXPECT_TRUE(grid_.SetCell({1, 1}, text));
    EXPECT_EQ(grid_.CellText({1, 1}), text);
    EXPECT_EQ(grid_.TypeNumber({1, 1}), type) << type;
    EXPECT_EQ(grid_.IsProtected({1, 1}), type == 2) << type;
  }
  EXPECT_EQ(slot_.cellStore.Size(), 1u);
}

TEST_F(GridCellsTest, ProtectingKeepsTextAndTypeAndMakesAnEmptyCellWhereNoneIs) {
  grid_.SetCell({1, 1}, L"12");
  system_.Take();
  EXPECT_TRUE(grid_.SetProtect({1, 1}, true));
  EXPECT_THAT(system_.Take(), ElementsAre("Invalidate 50,21,100,42"));
  EXPECT_TRUE(grid_.SetProtect({200, 1}, false));
  EXPECT_EQ(grid_.IsProtected({1, 1}), true);
  EXPECT_EQ(grid_.CellText({1, 1}), L"12");
  EXPECT_EQ(grid_.TypeNumber({1, 1}), 2);
  EXPECT_EQ(grid_.TypeNumber({200, 1}), 1);
  EXPECT_EQ(slot_.rows, 100);
}

TEST_F(GridCellsTest, DeletingIsReportedWhetherOrNotThereWasACell) {
  grid_.SetCell({1, 1}, L"12");
  system_.Take();
  for (int time = 0; time < 2; ++time) {
    EXPECT_TRUE(grid_.DeleteCell({1, 1}));
    EXPECT_THAT(system_.Take(), ElementsAre("Invalidate 50,21,100,42", "Notify 10 3,2"));
    EXPECT_EQ(grid_.TypeNumber({1, 1}), 0);
  }
}

TEST_F(GridCellsTest, StoringRepaintsTheCellAndNothingElse) {
  grid_.SetCell({2, 3}, L"a text that is wider than the column is");
  EXPECT_THAT(system_.Take(), ElementsAre("Invalidate 150,42,200,63"));
  EXPECT_EQ(slot_.colWidth[3], 50);
}

TEST_F(GridCellsTest, ATextThatJustFitsInTheLastRowChangesNoSizes) {
  slot_.autoWidth = true;
  system_.charWidths[kCellFont] = 9;
  grid_.SetCell({100, 1}, L"12345");  // 45 wide, 16 high, and 5 around
  EXPECT_THAT(system_.Take(), ElementsAre("Invalidate 50,2100,100,2121"));
  slot_.headerHeight = 23;
  grid_.SetCell({0, 1}, L"1");
  EXPECT_THAT(system_.Take(), ElementsAre("Invalidate 50,0,100,23"));
}

TEST_F(GridCellsTest, ACellBelowTheLastRowAddsRowsIfThatIsOn) {
  grid_.SetCell({100, 1}, L"x");
  EXPECT_EQ(slot_.rows, 100);
  grid_.SetCell({150, 1}, L"x");
  EXPECT_EQ(slot_.rows, 150);
  EXPECT_THAT(system_.Take(), Contains("InvalidateAll erase"));
  slot_.autoRow = false;
  grid_.SetCell({151, 1}, L"x");
  EXPECT_EQ(slot_.rows, 150);
  slot_.autoRow = true;
  grid_.SetCell({1, 1}, L"x");  // the last cell of all counts, not the one just stored
  EXPECT_EQ(slot_.rows, 151);
  EXPECT_EQ(slot_.cols, 10);
}

TEST_F(GridCellsTest, RowsAndColumnsGrowWithTheTextWhereTheyMay) {
  struct Case {
    const char* what;
    GridCell cell;
    const wchar_t* text;
    bool autoWidth, ellipsis;
    std::int32_t headerHeight, rowHeight, colWidth;
  };
  const Case cases[] = {
      {"wider", {1, 4}, L"123456", true, true, 21, 21, 65},
      {"as wide as it is", {1, 4}, L"1234", true, true, 21, 21, 50},
      {"off", {1, 4}, L"123456\n7", false, false, 21, 21, 50},
      {"one line with dots", {1, 4}, L"1\n123456\n1", true, true, 21, 21, 65},
      {"the widest of three lines", {1, 4}, L"1\n123456\n1", true, false, 21, 53, 65},
      {"a line feed at the end", {1, 4}, L"1\n", true, false, 21, 37, 50},
      {"a heading, off", {0, 4}, L"12345\n", false, true, 41, 21, 65},
      {"a heading of one line", {0, 4}, L"1", false, true, 23, 21, 50},
      {"the heading column", {1, 0}, L"123456", true, true, 21, 21, 65},
      {"an empty text", {1, 4}, L"", true, false, 21, 21, 50},
      {"a hidden column's heading", {0, 256}, L"", false, true, 23, 21, 5},
      {"no column at all", {1, -1}, L"123456", true, true, 21, 21, 0},
  };
  for (const Case& each : cases) {
    slot_.headerHeight = slot_.rowHeight = 21;
    slot_.colWidth = InitialColWidths();
    slot_.autoWidth = each.autoWidth;
    slot_.ellipsis = each.ellipsis;
    grid_.SetCell(each.cell, each.text);
    EXPECT_EQ(slot_.headerHeight, each.headerHeight) << each.what;
    EXPECT_EQ(slot_.rowHeight, each.rowHeight) << each.what;
    EXPECT_EQ(WidthOf(slot_, each.cell.col), each.colWidth) << each.what;
  }
}

// Needs no memory itself for what the control asks of it.
class BeepCounter : public RecordingGridSystem {
 public:
  void Beep() override { ++beeps; }
  void Invalidate(const GridRect&, bool) override {}

  int beeps = 0;
};

TEST_F(GridCellsTest, WithoutMemoryTheControlBeepsAndKeepsWhatWasStored) {
  const std::wstring text(60, L'x');
  BeepCounter system;
  Grid grid(slot_, system);
  grid.SetCell({1, 1}, L"12");
  {
    const FailingMemory memory(0);
    EXPECT_TRUE(grid.SetCell({1, 1}, text));
    EXPECT_TRUE(grid.SetProtect({2, 1}, true));
  }
  EXPECT_EQ(system.beeps, 2);
  EXPECT_EQ(grid.CellText({1, 1}), L"12");
  EXPECT_EQ(slot_.cellStore.Size(), 1u);
}

}  // namespace
}  // namespace quillgate
