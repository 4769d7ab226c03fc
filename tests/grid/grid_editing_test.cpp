#include "grid/grid_editing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GridEditingTest : public GridFixture {
 protected:
  GridEditingTest() {
    slot_.cursorRow = 2;
    slot_.cursorCol = 3;
    slot_.cellFont = 1;
    slot_.caretHeight = 13;
    slot_.hasFocus = true;
  }

  GridEditing editing_{slot_, system_};
};

TEST_F(GridEditingTest, TheFirstCharacterBeginsAnEdit) {
  editing_.Type(L'a');
  EXPECT_THAT(system_.Take(), ElementsAre("DrawBox 152,44,198,61 0 ffffff",
                                          "PutText 153,44,193,61 right font 1 colour 0 |a|",
                                          "SetCaretPlace 194,46", "ShowCaret", "Notify 8 2,3"));
  EXPECT_TRUE(slot_.editing);
  editing_.Type(L'b');
  EXPECT_THAT(system_.Take(), ElementsAre("HideCaret", "DrawBox 152,44,198,61 0 ffffff",
                                          "PutText 153,44,193,61 right font 1 colour 0 |ab|",
                                          "SetCaretPlace 194,46", "ShowCaret"));
}

TEST_F(GridEditingTest, BackspaceRemovesAndBeginsToo) {
  editing_.Backspace();
  EXPECT_THAT(TakeNotifications(), ElementsAre("Notify 8 2,3"));
  for (const wchar_t character : {L'a', L'b', L'c'})
    editing_.Type(character);
  editing_.Backspace();
  EXPECT_EQ(slot_.editText, L"ab");
  EXPECT_THAT(TakeNotifications(), IsEmpty());
}

TEST_F(GridEditingTest, ATextOfFullLengthTakesNoMore) {
  for (int count = 0; count < 300; ++count)
    editing_.Type(L'x');
  EXPECT_THAT(Take({"Beep"}), IsEmpty());
  editing_.Type(L'y');
  EXPECT_THAT(system_.Take(), ElementsAre("Beep"));
  EXPECT_EQ(slot_.editText, std::wstring(300, L'x'));
}

TEST_F(GridEditingTest, TheEndOfALongTextIsShown) {
  for (const wchar_t character : {L'a', L'b', L'c', L'd', L'e', L'f', L'g'})
    editing_.Type(character);
  // Forty pixels have room for five characters.
  EXPECT_EQ(Take({"PutText"}).back(), "PutText 153,44,193,61 right font 1 colour 0 |cdefg|");
}

TEST_F(GridEditingTest, ACommitStoresTheTextAndTellsTheParentLast) {
  slot_.defaultProtect = L'P';
  editing_.Type(L'4');
  editing_.Type(L'2');
  system_.Take();
  editing_.Commit();
  EXPECT_THAT(system_.Take(), ElementsAre("Invalidate 150,42,200,63", "InvalidateAll", "HideCaret",
                                          "Notify 10 2,3"));
  EXPECT_EQ(grid_.CellText({2, 3}), L"42");
  EXPECT_EQ(grid_.IsProtected({2, 3}), true);
  EXPECT_FALSE(slot_.editing);
  EXPECT_EQ(slot_.editText, L"");
}

TEST_F(GridEditingTest, ACommitWithoutCharactersEmptiesTheCell) {
  grid_.SetCell({2, 3}, L"before");
  editing_.Backspace();
  editing_.Commit();
  EXPECT_EQ(grid_.CellText({2, 3}), L"");
}

TEST_F(GridEditingTest, ACancelLeavesTheCellAsItWas) {
  grid_.SetCell({2, 3}, L"before");
  editing_.Type(L'x');
  system_.Take();
  editing_.Cancel();
  EXPECT_THAT(system_.Take(), ElementsAre("InvalidateAll", "HideCaret", "Notify 10 2,3"));
  EXPECT_EQ(grid_.CellText({2, 3}), L"before");
  editing_.Type(L'y');
  EXPECT_EQ(slot_.editText, L"y");
}

TEST_F(GridEditingTest, WithoutAnEditThereIsNothingToEnd) {
  editing_.Commit();
  editing_.Cancel();
  editing_.DrawEditBox();
  EXPECT_THAT(system_.Take(), IsEmpty());
  EXPECT_EQ(slot_.cellStore.Size(), 0U);
}

TEST_F(GridEditingTest, ABoxThatIsScrolledAwayTakesItsCaretAlong) {
  editing_.Type(L'a');
  system_.Take();
  slot_.homeRow = 3;
  editing_.DrawEditBox();
  EXPECT_THAT(system_.Take(), ElementsAre("SetCaretPlace -3,-13"));
}

TEST_F(GridEditingTest, TheCaretOfAnotherWindowStaysWhereItIs) {
  editing_.Type(L'a');
  slot_.hasFocus = false;
  system_.Take();
  editing_.DrawEditBox();
  EXPECT_THAT(Take({"SetCaretPlace"}), IsEmpty());
}

TEST_F(GridEditingTest, AParentMayEndTheEditThatHasJustBegun) {
  system_.onCall = [&](const std::string& call) {
    if (call.starts_with("Notify 8")) GridEditing(slot_, system_).Cancel();
  };
  editing_.Type(L'a');
  EXPECT_FALSE(slot_.editing);
  int shown = 0;
  for (const std::string& call : Take({"ShowCaret", "HideCaret"}))
    shown += call == "ShowCaret" ? 1 : -1;
  EXPECT_EQ(shown, 0);
}

class GridFocusTest : public GridFixture {};

TEST_F(GridFocusTest, ComesWithFrameCaretAndRepaint) {
  slot_.cursorRow = 2;
  slot_.cellStore.Store({2, 1}, {true, CellType::kText, L""});
  grid_.OnFocusGained();
  EXPECT_THAT(Take({"XorFrame", "Notify", "CreateCaret", "ShowCaret", "Invalidate"}),
              ElementsAre("XorFrame 50,42,100,63 ffffff", "Notify 23 0,0", "CreateCaret 3,13",
                          "InvalidateAll"));
  EXPECT_TRUE(slot_.hasFocus);
  EXPECT_TRUE(slot_.currentProtected);
  EXPECT_EQ(slot_.caretHeight, 13);
  grid_.OnFocusLost();
  EXPECT_THAT(system_.Take(), ElementsAre("DestroyCaret", "XorFrame 50,42,100,63 ffffff",
                                          "Notify 24 0,0", "InvalidateAll"));
  EXPECT_FALSE(slot_.hasFocus);
}

TEST_F(GridFocusTest, ScrollsToTheCursor) {
  slot_.cursorRow = 50;
  grid_.OnFocusGained();
  EXPECT_EQ(slot_.homeRow, 38);
}

TEST_F(GridFocusTest, AnEditGoesOnWhenItComesBack) {
  GridEditing(slot_, system_).Type(L'a');
  grid_.OnFocusLost();
  system_.Take();
  grid_.OnFocusGained();
  EXPECT_THAT(Take({"CreateCaret", "ShowCaret"}), ElementsAre("CreateCaret 3,13", "ShowCaret"));
}

TEST_F(GridFocusTest, DisabledHeadingsAreGrey) {
  grid_.OnEnabled(false);
  EXPECT_EQ(slot_.headingTextColor, 0x787878U);
  grid_.OnEnabled(true);
  EXPECT_EQ(slot_.headingTextColor, 0U);
  EXPECT_THAT(system_.Take(), ElementsAre("InvalidateAll", "InvalidateAll"));
}

}  // namespace
}  // namespace quillgate
