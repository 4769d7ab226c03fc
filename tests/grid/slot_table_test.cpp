#include "grid/slot_table.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quillgate {
namespace {

TEST(SlotTable, TheFreeSlotOfTheHighestNumberIsTaken) {
  SlotTable table;
  EXPECT_EQ(table.NumberOf(*table.Take(500)), 19u);
  GridSlot* second = table.Take(501);
  EXPECT_EQ(table.NumberOf(*second), 18u);
  EXPECT_EQ(table.NumberOf(*table.Take(502)), 17u);
  table.Release(*second);
  EXPECT_EQ(table.NumberOf(*table.Take(503)), 18u);
}

TEST(SlotTable, ThereIsNoSlotForATakenIdentifierNorForNoneNorForATwentyFirst) {
  SlotTable table;
  for (std::uint32_t id = 1; id <= 20; ++id) {
    EXPECT_EQ(table.Take(0), nullptr);
    EXPECT_NE(table.Take(id), nullptr) << id;
    EXPECT_EQ(table.Take(id), nullptr) << id;
  }
  EXPECT_EQ(table.Take(21), nullptr);
}

TEST(SlotTable, AReleasedSlotHasSomeValuesOfAnEndedControlAndKeepsTheOthers) {
  SlotTable table;
  GridSlot& slot = *table.Take(500);
  auto forgotten = std::tie(slot.rows, slot.cols, slot.homeRow, slot.homeCol, slot.cursorRow,
                            slot.cursorCol, slot.rowHeight, slot.headerHeight, slot.colWidth[0],
                            slot.colWidth[1], slot.colWidth[255], slot.rowNumbers, slot.colLetters,
                            slot.rowHighlight, slot.cursorColor, slot.protectColor,
                            slot.unprotectColor, slot.cellFont, slot.defaultProtect);
  auto kept =
      std::tie(slot.title, slot.titleHeight, slot.editable, slot.autoRow, slot.colWidth[256],
               slot.extendLastCol, slot.gridLineColor, slot.headingFont);
  const std::tuple ownValues(std::wstring(L"Hours"), 24, true, false, 33, false, 5u, GridFont{4});
  forgotten = std::tuple(7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, false, false, false, 1u, 1u, 1u,
                         GridFont{3}, L'P');
  kept = ownValues;
  slot.cellStore.Store({1, 1}, {});
  table.Release(slot);
  EXPECT_EQ(forgotten, std::tuple(100, 255, 1, 1, 1, 1, 20, 20, 40, 50, 50, true, true, true,
                                  0xFFFFFFu, 0x808080u, 0xFFFFFFu, GridFont{0}, L'U'));
  EXPECT_EQ(kept, ownValues);
  EXPECT_EQ(slot.cellStore.Size(), 0u);
}

}  // namespace
}  // namespace quillgate
