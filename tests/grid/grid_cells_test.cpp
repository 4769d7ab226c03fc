#include "failing_memory.h"
#include "grid/grid_layout.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

constexpr GridCell kCell{1, 1};

// Font 1 for cells, 2 for headings.
class GridCellsTest : public GridFixture {
 protected:
  GridCellsTest() {
    slot_.cellFont = 1;
    slot_.headingFont = 2;
    system_.fonts = {{1, {10, 16}}, {2, {12, 18}}};
    PutCursor({3, 2});
  }

  auto Stored() {
    return std::tuple(grid_.IsProtected(kCell), grid_.TypeNumber(kCell), grid_.CellText(kCell));
  }
};

TEST_F(GridCellsTest, WhatIsStoredIsFoundWithTypeTextAndTheDefaultsProtection) {
  const std::pair<const wchar_t*, int> texts[] = {{L"abc", 1},   {L"12.5", 2}, {L"tRUE", 3},
                                                  {L"false", 4}, {L"~7", 5},   {L"", 1}};
  for (const auto& [text, type] : texts) {
    grid_.SetDefaultProtect(type == 2);
    EXPECT_TRUE(grid_.SetCell(kCell, text));
    EXPECT_EQ(Take(), "Invalidate 50,21,100,42") << type;
    EXPECT_EQ(Stored(), std::tuple(type == 2, type, text)) << type;
  }
  EXPECT_EQ(slot_.cellStore.Size(), 1u);
}

TEST_F(GridCellsTest, ProtectingAndDeletingRepaintTheCellAndDeletingIsNotifiedEvenOfNoCell) {
  const std::string repaint = "Invalidate 50,21,100,42";
  const auto protect = [&] { EXPECT_TRUE(grid_.SetProtect(kCell, true)); };
  const auto erase = [&] { EXPECT_TRUE(grid_.DeleteCell(kCell)); };
  grid_.SetCell(kCell, L"12");
  ExpectAsked({""}, {{"protect", protect, repaint}});
  EXPECT_EQ(Stored(), std::tuple(true, 2, L"12"));
  ExpectAsked({""}, {{"delete", erase, repaint + "; Notify 10 3,2"},
                     {"delete what is not there", erase, repaint + "; Notify 10 3,2"}});
  EXPECT_EQ(Stored(), std::tuple(false, 0, L""));
  ExpectAsked({""}, {{"protect what is not there", protect, repaint}});
  EXPECT_EQ(Stored(), std::tuple(true, 1, L"")) << "an empty text";
}

TEST_F(GridCellsTest, ACellBelowTheLastRowAddsRowsIfThatIsOn) {
  const auto store = [&](std::int32_t row, bool autoRow) {
    return [=, this] {
      slot_.autoRow = autoRow;
      grid_.SetCell({row, 1}, L"x");
    };
  };
  ExpectAsked(
      {"InvalidateAll", "SetBarRange vertical"},
      {{"the last row", store(100, true), ""},
       {"below it", store(150, true), "InvalidateAll erase; SetBarRange vertical 138"},
       {"off", store(151, false), ""},
       {"the last cell of all", store(1, true), "InvalidateAll erase; SetBarRange vertical 139"}});
  EXPECT_EQ(slot_.rows, 151);
  EXPECT_EQ(slot_.cols, 10);
}

TEST_F(GridCellsTest, RowsAndColumnsGrowWithTheTextWhereTheyMay) {
  const struct {
    const char* what;
    GridCell cell;
    const wchar_t* text;
    bool autoWidth, ellipsis;
    std::int32_t headerHeight, rowHeight, colWidth;
  } cases[] = {
      {"wider", {1, 4}, L"123456", true, true, 21, 21, 65},
      {"as wide as it is", {1, 4}, L"1234", true, true, 21, 21, 50},
      {"off", {1, 4}, L"123456\n7", false, false, 21, 21, 50},
      {"one line with dots", {1, 4}, L"1\n123456\n1", true, true, 21, 21, 65},
      {"the widest of three lines", {1, 4}, L"1\n123456\n1", true, false, 21, 53, 65},
      {"a line feed at the end", {1, 4}, L"1\n", true, false, 21, 37, 50},
      {"a heading, off", {0, 4}, L"12345\n", false, true, 41, 21, 65},
      {"a heading of one line", {0, 4}, L"1", false, true, 23, 21, 50},
      {"the heading column", {1, 0}, L"123456", true, true, 21, 21, 65},
      {"a hidden column's heading", {0, 256}, L"", false, true, 23, 21, 5},
      {"no column at all", {1, -1}, L"123456", true, true, 21, 21, 0},
  };
  for (const auto& each : cases) {
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

TEST_F(GridCellsTest, ATextThatJustFitsChangesNoSizes) {
  slot_.autoWidth = true;
  system_.fonts[1].width = 9;
  grid_.SetCell({100, 1}, L"12345");  // 45 wide, 16 high, and 5 around
  EXPECT_EQ(Take(), "Invalidate 50,2100,100,2121");
  slot_.headerHeight = 23;
  grid_.SetCell({0, 1}, L"1");
  EXPECT_EQ(Take(), "Invalidate 50,0,100,23");
}

TEST_F(GridCellsTest, WithoutMemoryTheControlBeepsAndKeepsWhatWasStored) {
  const std::wstring text(60, L'x');
  grid_.SetCell(kCell, L"12");
  Take();
  grantedAllocations = 0;
  EXPECT_TRUE(grid_.SetCell(kCell, text));
  grantedAllocations = 0;
  EXPECT_TRUE(grid_.SetProtect({2, 1}, true));
  EXPECT_EQ(Take({"Beep"}), "Beep; Beep");
  EXPECT_EQ(grid_.CellText(kCell), L"12");
  EXPECT_EQ(slot_.cellStore.Size(), 1u);
}

}  // namespace
}  // namespace quillgate
