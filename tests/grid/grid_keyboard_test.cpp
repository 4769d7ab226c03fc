#include "grid/grid_keyboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "grid/grid_keys.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Keys that only give characters, by the character.
constexpr int kFirstCharKey = 1'000;

// What tells the parent that the cursor has moved.
enum Change { kNone = 0, kRow = 6, kCol = 7 };

std::vector<std::string> Told(int code, GridCell cursor) {
  if (code == kNone) return {};
  const std::string place = " " + std::to_string(cursor.row) + "," + std::to_string(cursor.col);
  return {"Notify " + std::to_string(code) + place, "Notify 5" + place};
}

class GridKeyboardTest : public GridFixture {
 protected:
  GridKeyboardTest() {
    for (int character = 1; character < 256; ++character)
      system_.characters[kFirstCharKey + character] = static_cast<wchar_t>(character);
    system_.characters[kKeyEnter] = kCharEnter;
    system_.characters[kKeyEscape] = 27;
  }

  void Place(GridCell cursor) {
    slot_.cursorRow = cursor.row;
    slot_.cursorCol = cursor.col;
  }
  void Type(char character) { grid_.OnKey(kFirstCharKey + character); }
};

// Thirteen rows fit.
TEST_F(GridKeyboardTest, KeysMoveTheCursorAndTellTheParentOfEachMove) {
  struct Case {
    const char* what;
    int key;
    std::int32_t rows;
    GridCell before;
    GridCell after;
    int code;
  };
  const Case cases[] = {
      {"down", kKeyDown, 100, {1, 1}, {2, 1}, kRow},
      {"down at the end", kKeyDown, 100, {100, 1}, {100, 1}, kNone},
      {"up", kKeyUp, 100, {5, 3}, {4, 3}, kRow},
      {"up at the top", kKeyUp, 100, {1, 1}, {1, 1}, kNone},
      {"page down", kKeyPageDown, 100, {2, 1}, {15, 1}, kRow},
      {"page down, less left", kKeyPageDown, 20, {12, 1}, {20, 1}, kRow},
      {"page down at the end", kKeyPageDown, 20, {20, 1}, {20, 1}, kNone},
      {"page up", kKeyPageUp, 100, {20, 1}, {7, 1}, kRow},
      {"page up, less left", kKeyPageUp, 100, {9, 1}, {1, 1}, kRow},
      {"page up at the top", kKeyPageUp, 100, {1, 1}, {1, 1}, kNone},
      {"right", kKeyRight, 100, {1, 1}, {1, 2}, kCol},
      {"right past a hidden column", kKeyRight, 100, {1, 4}, {1, 6}, kCol},
      {"right at the end", kKeyRight, 100, {1, 10}, {1, 10}, kNone},
      {"left past a hidden column", kKeyLeft, 100, {1, 6}, {1, 4}, kCol},
      {"left at the beginning", kKeyLeft, 100, {1, 1}, {1, 1}, kNone},
      {"enter", kKeyEnter, 100, {3, 2}, {4, 2}, kRow},
      {"enter at the end", kKeyEnter, 100, {100, 2}, {100, 2}, kNone},
      {"down without rows", kKeyDown, 0, {1, 1}, {1, 1}, kNone},
      {"up without rows, from where they were", kKeyUp, 0, {5, 1}, {5, 1}, kNone},
      {"page down without rows", kKeyPageDown, 0, {1, 1}, {1, 1}, kNone},
      {"enter without rows", kKeyEnter, 0, {1, 1}, {1, 1}, kNone},
      {"up from below the rows that were taken away", kKeyUp, 3, {50, 1}, {3, 1}, kRow},
  };
  slot_.colWidth[5] = 0;
  for (const bool editable : {false, true}) {
    for (const Case& each : cases) {
      slot_.editable = editable;
      slot_.rows = each.rows;
      Place(each.before);
      system_.Take();
      grid_.OnKey(each.key);
      EXPECT_EQ(slot_.Cursor(), each.after) << each.what;
      EXPECT_EQ(TakeNotifications(), Told(each.code, each.after)) << each.what;
    }
  }
}

TEST_F(GridKeyboardTest, SomeKeysAreForTheParent) {
  Place({3, 2});
  for (int number = 1; number <= 12; ++number) {
    grid_.OnKey(kKeyF1 + number - 1);
    EXPECT_THAT(system_.Take(), ElementsAre("Notify " + std::to_string(10 + number) + " 3,2"));
  }
  grid_.OnKey(kKeyDelete);
  grid_.OnKey(kKeyTab);
  EXPECT_THAT(system_.Take(), ElementsAre("Notify 9 3,2", "FocusParent"));
  EXPECT_EQ(slot_.Cursor(), (GridCell{3, 2}));
}

TEST_F(GridKeyboardTest, OnlyWhatMayBeTypedIsTyped) {
  slot_.editable = true;
  for (int character = 1; character < 256; ++character) {
    if (character == kCharBackspace || character == kCharEnter) continue;
    slot_.editing = false;
    slot_.editText.clear();
    grid_.OnKey(kFirstCharKey + character);
    const bool isTyped = character >= 32 && character <= 125;
    EXPECT_EQ(slot_.editing, isTyped) << character;
    EXPECT_EQ(slot_.editText.size(), isTyped ? 1U : 0U) << character;
  }
}

TEST_F(GridKeyboardTest, CellsThatMayNotBeEditedAreNot) {
  struct Case {
    const char* what;
    bool editable;
    bool isProtected;
    std::int32_t rows;
    std::size_t typed;
  };
  const Case cases[] = {
      {"editable", true, false, 100, 1},
      {"not editable", false, false, 100, 0},
      {"protected", true, true, 100, 0},
      {"no rows", true, false, 0, 0},
  };
  for (const Case& each : cases) {
    slot_.editable = each.editable;
    slot_.rows = each.rows;
    slot_.cellStore.Store({1, 1}, {each.isProtected, CellType::kText, L"text"});
    Type('a');
    EXPECT_EQ(slot_.editText.size(), each.typed) << each.what;
    EXPECT_EQ(slot_.currentProtected, each.isProtected) << each.what;
    slot_.editing = false;
    slot_.editText.clear();
    grid_.OnKey(kFirstCharKey + kCharBackspace);
    EXPECT_EQ(slot_.editing, each.typed == 1) << each.what;
    slot_.editing = false;
  }
}

TEST_F(GridKeyboardTest, EnterLeavesAProtectedCell) {
  slot_.cellStore.Store({1, 1}, {true, CellType::kText, L"text"});
  grid_.OnKey(kKeyEnter);
  EXPECT_EQ(slot_.cursorRow, 2);
}

TEST_F(GridKeyboardTest, MovingKeysCommitWhatWasTypedFirst) {
  struct Case {
    int key;
    GridCell after;
    int code;
  };
  const Case cases[] = {{kKeyDown, {6, 3}, kRow},  {kKeyUp, {4, 3}, kRow},
                        {kKeyLeft, {5, 2}, kCol},  {kKeyRight, {5, 4}, kCol},
                        {kKeyEnter, {6, 3}, kRow}, {kKeyPageDown, {18, 3}, kRow},
                        {kKeyPageUp, {1, 3}, kRow}};
  slot_.editable = true;
  for (const Case& each : cases) {
    slot_.cellStore.Clear();
    Place({5, 3});
    Type('4');
    Type('x');
    grid_.OnKey(kFirstCharKey + kCharBackspace);
    Type('2');
    grid_.OnKey(each.key);
    auto told = Told(each.code, each.after);
    told.insert(told.begin(), {"Notify 8 5,3", "Notify 10 5,3"});
    EXPECT_EQ(TakeNotifications(), told) << each.key;
    EXPECT_EQ(grid_.CellText({5, 3}), L"42") << each.key;
    EXPECT_EQ(slot_.Cursor(), each.after) << each.key;
  }
}

TEST_F(GridKeyboardTest, AParentThatMovesTheCursorAfterACommitIsObeyed) {
  slot_.editable = true;
  Type('a');
  system_.onCall = [&](const std::string& call) {
    if (call.starts_with("Notify 10")) Grid(slot_, system_).SetCursorPos(40, 2);
  };
  grid_.OnKey(kKeyDown);
  EXPECT_EQ(slot_.Cursor(), (GridCell{41, 2}));
}

TEST_F(GridKeyboardTest, EscapeCancelsAnEditAndElseDoesNothing) {
  slot_.editable = true;
  grid_.OnKey(kKeyEscape);
  EXPECT_THAT(system_.Take(), IsEmpty());
  Type('a');
  system_.Take();
  grid_.OnKey(kKeyEscape);
  EXPECT_THAT(TakeNotifications(), ElementsAre("Notify 10 1,1"));
  EXPECT_EQ(slot_.cellStore.Size(), 0U);
}

TEST_F(GridKeyboardTest, DialogsLeaveKeysToTheGrid) {
  slot_.editable = true;
  EXPECT_EQ(grid_.DialogCode(0), 0x91U);
  EXPECT_EQ(grid_.DialogCode(kKeyTab), 0x91U);
  EXPECT_EQ(grid_.DialogCode(kKeyEscape), 0U);
  EXPECT_THAT(system_.Take(), IsEmpty());

  Type('a');
  system_.Take();
  EXPECT_EQ(grid_.DialogCode(kKeyEscape), 0x91U);
  EXPECT_THAT(TakeNotifications(), ElementsAre("Notify 10 1,1"));
  EXPECT_FALSE(slot_.editing);

  Type('b');
  system_.Take();
  EXPECT_EQ(grid_.DialogCode(kKeyEnter), 0x91U);
  EXPECT_THAT(TakeNotifications(), ElementsAre("Notify 10 1,1", "Notify 6 2,1", "Notify 5 2,1"));
  EXPECT_EQ(grid_.CellText({1, 1}), L"b");
  EXPECT_EQ(grid_.DialogCode(kKeyEnter), 0x91U);
  EXPECT_THAT(TakeNotifications(), ElementsAre("Notify 6 3,1", "Notify 5 3,1"));
}

}  // namespace
}  // namespace quillgate
