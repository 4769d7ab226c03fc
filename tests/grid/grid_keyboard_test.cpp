#include "grid/grid_keys.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

class GridKeyboardTest : public GridFixture {
 protected:
  GridKeyboardTest() { slot_.autoRow = false; }

  void Type(int character) { grid_.OnKey(kFirstCharKey + character); }
  void ForgetEdit() {
    slot_.editing = false;
    slot_.editText.clear();
  }
};

std::string Notified(int code, GridCell cell) {
  return "Notify " + std::to_string(code) + " " + testing::PrintToString(cell);
}

// What the parent hears of the end of an edit and of the move that follows.
std::string NotifiedOf(bool edit, GridCell before, GridCell after) {
  const std::string ended = edit ? Notified(10, before) : "";
  if (after == before) return ended;
  const int moved = after.row != before.row ? 6 : 7;
  return ended + (edit ? "; " : "") + Notified(moved, after) + "; " + Notified(5, after);
}

// Thirteen rows fit.
TEST_F(GridKeyboardTest, KeysCommitWhatWasTypedMoveTheCursorAndTellOfBoth) {
  const std::tuple<const char*, int, std::int32_t, GridCell, GridCell> cases[] = {
      {"down", kKeyDown, 100, {1, 1}, {2, 1}},
      {"down at the end", kKeyDown, 100, {100, 1}, {100, 1}},
      {"up", kKeyUp, 100, {5, 3}, {4, 3}},
      {"up at the top", kKeyUp, 100, {1, 1}, {1, 1}},
      {"page down", kKeyPageDown, 100, {2, 1}, {15, 1}},
      {"page down, less left", kKeyPageDown, 20, {12, 1}, {20, 1}},
      {"page down at the end", kKeyPageDown, 20, {20, 1}, {20, 1}},
      {"page up", kKeyPageUp, 100, {20, 1}, {7, 1}},
      {"page up, less left", kKeyPageUp, 100, {9, 1}, {1, 1}},
      {"page up at the top", kKeyPageUp, 100, {1, 1}, {1, 1}},
      {"right", kKeyRight, 100, {1, 1}, {1, 2}},
      {"right past a hidden column", kKeyRight, 100, {1, 4}, {1, 6}},
      {"right from before the columns", kKeyRight, 100, {1, 0}, {1, 1}},
      {"right at the end", kKeyRight, 100, {1, 10}, {1, 10}},
      {"left past a hidden column", kKeyLeft, 100, {1, 6}, {1, 4}},
      {"right from beyond the columns", kKeyRight, 100, {1, 90}, {1, 90}},
      {"left from beyond the columns", kKeyLeft, 100, {1, 90}, {1, 10}},
      {"left at the beginning", kKeyLeft, 100, {1, 1}, {1, 1}},
      {"enter", kKeyEnter, 100, {3, 2}, {4, 2}},
      {"enter at the end", kKeyEnter, 100, {100, 2}, {100, 2}},
      {"down without rows", kKeyDown, 0, {1, 1}, {1, 1}},
      {"up without rows, from where they were", kKeyUp, 0, {5, 1}, {5, 1}},
      {"page down without rows", kKeyPageDown, 0, {1, 1}, {1, 1}},
      {"enter without rows", kKeyEnter, 0, {1, 1}, {1, 1}},
      {"up from below the rows that were taken away", kKeyUp, 3, {50, 1}, {3, 1}},
  };
  slot_.colWidth[5] = 0;
  for (const bool isTyped : {false, true}) {
    slot_.editable = isTyped;
    for (const auto& [what, key, rows, before, after] : cases) {
      slot_.rows = rows;
      slot_.cellStore.Clear();
      PutCursor(before);
      for (const int character : {int{'4'}, int{'x'}, int{kCharBackspace}, int{'2'}})
        Type(character);
      const bool edits = isTyped && rows > 0;
      EXPECT_EQ(Take({"Notify"}), edits ? Notified(8, before) : "") << what;
      grid_.OnKey(key);
      EXPECT_EQ(Take({"Notify"}), NotifiedOf(edits, before, after)) << what;
      EXPECT_EQ(grid_.CellText(before), edits ? L"42" : L"") << what;
      EXPECT_EQ(slot_.Cursor(), after) << what;
    }
  }
}

TEST_F(GridKeyboardTest, AParentThatMovesTheCursorAfterACommitIsObeyed) {
  slot_.editable = true;
  Type('a');
  When("Notify 10", [](Grid& grid) { grid.SetCursorPos(40, 2); });
  grid_.OnKey(kKeyDown);
  EXPECT_EQ(slot_.Cursor(), (GridCell{41, 2}));
}

TEST_F(GridKeyboardTest, SomeKeysAreForTheParent) {
  PutCursor({3, 2});
  for (int number = 1; number <= 12; ++number) {
    grid_.OnKey(kKeyF1 + number - 1);
    EXPECT_EQ(Take(), "Notify " + std::to_string(10 + number) + " 3,2");
  }
  grid_.OnKey(kKeyDelete);
  grid_.OnKey(kKeyTab);
  EXPECT_EQ(Take(), "Notify 9 3,2; FocusParent");
}

TEST_F(GridKeyboardTest, OnlyWhatMayBeTypedIsTyped) {
  slot_.editable = true;
  for (int character = 1; character < 256; ++character) {
    if (character == kCharBackspace || character == kCharEnter) continue;
    ForgetEdit();
    Type(character);
    const bool isTyped = character >= 32 && character <= 125;
    EXPECT_EQ(slot_.editing, isTyped) << character;
    EXPECT_EQ(slot_.editText.size(), isTyped ? 1U : 0U) << character;
  }
}

TEST_F(GridKeyboardTest, OnlyCellsThatMayBeEditedAreAndEnterLeavesAll) {
  const auto type = [&](bool editable, bool isProtected, std::int32_t rows) {
    return [=, this] {
      slot_.editable = editable;
      slot_.rows = rows;
      for (const int character : {int{'a'}, int{kCharBackspace}}) {
        ForgetEdit();
        PutCursor({1, 1});
        slot_.cellStore.Store({1, 1}, {isProtected, CellType::kText, L"text"});
        Type(character);
        EXPECT_EQ(slot_.currentProtected, isProtected);
      }
      grid_.OnKey(kKeyEnter);
    };
  };
  ExpectAsked({"Notify 8", "Notify 6"},
              {{"editable", type(true, false, 100), "Notify 8 1,1; Notify 8 1,1; Notify 6 2,1"},
               {"not editable", type(false, false, 100), "Notify 6 2,1"},
               {"protected", type(true, true, 100), "Notify 6 2,1"},
               {"no rows", type(true, false, 0), ""}});
}

TEST_F(GridKeyboardTest, EscapeAndEnterEndAnEditAlsoWhenADialogAsksForThem) {
  const auto type = [&] { Type('a'); };
  const auto press = [&](int key) { return [=, this] { grid_.OnKey(key); }; };
  const auto ask = [&](int key, std::uint32_t code) {
    return [=, this] { EXPECT_EQ(grid_.DialogCode(key), code) << key; };
  };
  slot_.editable = true;
  ExpectAsked(
      {"Notify", "FocusParent"},
      {{"escape without an edit", press(kKeyEscape), ""},
       {"which is the dialog's", ask(kKeyEscape, 0), ""},
       {"other keys are not", ask(0, 0x91), ""},
       {"tab", ask(kKeyTab, 0x91), ""},
       {"first edit", type, "Notify 8 1,1"},
       {"escape", press(kKeyEscape), "Notify 10 1,1"},
       {"second edit", type, "Notify 8 1,1"},
       {"escape in a dialog", ask(kKeyEscape, 0x91), "Notify 10 1,1"},
       {"third edit", type, "Notify 8 1,1"},
       {"enter in a dialog", ask(kKeyEnter, 0x91), "Notify 10 1,1; Notify 6 2,1; Notify 5 2,1"},
       {"enter without an edit", ask(kKeyEnter, 0x91), "Notify 6 3,1; Notify 5 3,1"}});
  EXPECT_EQ(grid_.CellText({1, 1}), L"a");
}

}  // namespace
}  // namespace quillgate
