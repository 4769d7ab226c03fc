#include "grid/slot_table.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

namespace quillgate {
namespace {

class SlotTableTest : public testing::Test {
 protected:
  std::unique_ptr<SlotTable> table_ = std::make_unique<SlotTable>();
};

TEST_F(SlotTableTest, TheFreeSlotOfTheHighestNumberIsTaken) {
  EXPECT_EQ(table_->NumberOf(*table_->Take(500)), 19u);
  GridSlot* second = table_->Take(501);
  EXPECT_EQ(table_->NumberOf(*second), 18u);
  EXPECT_EQ(table_->NumberOf(*table_->Take(502)), 17u);
  table_->Release(*second);
  EXPECT_EQ(table_->NumberOf(*table_->Take(503)), 18u);
}

TEST_F(SlotTableTest, ThereIsNoSlotForATakenIdentifierNorForNoneNorForATwentyFirst) {
  for (std::uint32_t id = 1; id <= 20; ++id) {
    EXPECT_EQ(table_->Take(0), nullptr);
    EXPECT_NE(table_->Take(id), nullptr) << id;
    EXPECT_EQ(table_->Take(id), nullptr) << id;
  }
  EXPECT_EQ(table_->Take(21), nullptr);
}

TEST_F(SlotTableTest, AReleasedSlotHasSomeValuesOfAnEndedControlAndKeepsTheOthers) {
  GridSlot& slot = *table_->Take(500);
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
  table_->Release(slot);
  EXPECT_EQ(forgotten, std::tuple(100, 255, 1, 1, 1, 1, 20, 20, 40, 50, 50, true, true, true,
                                  0xFFFFFFu, 0x808080u, 0xFFFFFFu, GridFont{0}, L'U'));
  EXPECT_EQ(kept, ownValues);
  EXPECT_EQ(slot.cellStore.Size(), 0u);
}

}  // namespace
}  // namespace quillgate
