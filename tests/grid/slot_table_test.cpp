#include "grid/slot_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

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

TEST_F(SlotTableTest, AReleasedSlotHasTheValuesOfAnEndedControl) {
  GridSlot* slot = table_->Take(500);
  slot->cellFont = 3;
  slot->defaultProtect = L'P';
  slot->rows = slot->cols = slot->homeRow = slot->homeCol = slot->cursorRow = slot->cursorCol = 7;
  slot->rowNumbers = slot->colLetters = slot->rowHighlight = false;
  slot->cursorColor = slot->protectColor = slot->unprotectColor = 1;
  std::fill(slot->colWidth.begin(), slot->colWidth.end(), 33);
  slot->cellStore.Store({1, 1}, {});
  table_->Release(*slot);

  EXPECT_EQ(slot->cellFont, 0u);
  EXPECT_EQ(slot->defaultProtect, L'U');
  EXPECT_EQ(slot->rows, 100);
  EXPECT_EQ(slot->cols, 255);
  EXPECT_EQ(slot->homeRow, 1);
  EXPECT_EQ(slot->homeCol, 1);
  EXPECT_EQ(slot->Cursor(), (GridCell{1, 1}));
  EXPECT_EQ(slot->rowHeight, 20);
  EXPECT_EQ(slot->headerHeight, 20);
  EXPECT_TRUE(slot->rowNumbers && slot->colLetters && slot->rowHighlight);
  EXPECT_EQ(slot->cursorColor, 0xFFFFFFu);
  EXPECT_EQ(slot->protectColor, 0x808080u);
  EXPECT_EQ(slot->unprotectColor, 0xFFFFFFu);
  EXPECT_EQ(slot->colWidth[0], 40);
  EXPECT_EQ(slot->colWidth[1], 50);
  EXPECT_EQ(slot->colWidth[255], 50);
  EXPECT_EQ(slot->colWidth[256], 33);
  EXPECT_EQ(slot->cellStore.Size(), 0u);
}

TEST_F(SlotTableTest, AReleasedSlotKeepsWhatElseItsControlHad) {
  GridSlot* slot = table_->Take(500);
  slot->title = L"Hours";
  slot->titleHeight = 24;
  slot->editable = slot->colResize = true;
  slot->extendLastCol = slot->autoRow = false;
  slot->gridLineColor = 5;
  slot->headingFont = 4;
  table_->Release(*slot);

  EXPECT_EQ(slot->title, L"Hours");
  EXPECT_EQ(slot->titleHeight, 24);
  EXPECT_TRUE(slot->editable && slot->colResize);
  EXPECT_FALSE(slot->extendLastCol || slot->autoRow);
  EXPECT_EQ(slot->gridLineColor, 5u);
  EXPECT_EQ(slot->headingFont, 4u);
}

}  // namespace
}  // namespace quillgate
