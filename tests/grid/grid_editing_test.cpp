#include "grid/grid_editing.h"

#include "grid_fixture.h"

namespace quillgate {
namespace {

class GridEditingTest : public GridFixture {
 protected:
  GridEditingTest() {
    PutCursor({2, 3});
    slot_.cellFont = 1;
    slot_.caretHeight = 13;
    slot_.hasFocus = true;
  }

  void Type(std::wstring_view text) {
    for (const wchar_t character : text)
      editing_.Type(character);
  }

  GridEditing editing_{slot_, system_};
};

TEST_F(GridEditingTest, EachStepOfAnEditIsShownAndItsBeginningAndEndAreNotified) {
  const auto commit = [&] { editing_.Commit(); };
  const auto cancel = [&] { editing_.Cancel(); };
  const auto backspace = [&] { editing_.Backspace(); };
  const std::string box = "DrawBox 152,44,198,61 0 ffffff; ";
  const std::string caret = "SetCaretPosition 194,46; ShowCaret";
  const auto text = [](const std::string& shown) {
    return "PutText 153,44,193,61 right font 1 colour 0 |" + shown + "|; ";
  };
  slot_.defaultProtect = L'P';
  ExpectAsked({""}, {{"nothing to commit", commit, ""},
                     {"nothing to cancel", cancel, ""},
                     {"nothing to draw", [&] { editing_.DrawEditBox(); }, ""},
                     {"4", [&] { Type(L"4"); }, box + text("4") + caret + "; Notify 8 2,3"},
                     {"2", [&] { Type(L"2"); }, "HideCaret; " + box + text("42") + caret},
                     {"x", [&] { Type(L"x"); }, "HideCaret; " + box + text("42x") + caret},
                     {"backspace", backspace, "HideCaret; " + box + text("42") + caret},
                     {"commit", commit,
                      "Invalidate 150,42,200,63; InvalidateAll; HideCaret; Notify 10 2,3"},
                     {"first backspace", backspace, box + caret + "; Notify 8 2,3"},
                     {"y", [&] { Type(L"y"); }, "HideCaret; " + box + text("y") + caret},
                     {"cancel", cancel, "InvalidateAll; HideCaret; Notify 10 2,3"},
                     {"z", [&] { Type(L"z"); }, box + text("z") + caret + "; Notify 8 2,3"}});
  EXPECT_EQ(grid_.CellText({2, 3}), L"42");
  EXPECT_EQ(grid_.IsProtected({2, 3}), true);
  editing_.Backspace();
  editing_.Commit();
  EXPECT_EQ(grid_.CellText({2, 3}), L"");
}

TEST_F(GridEditingTest, ATextOfFullLengthTakesNoMoreAndShowsItsEnd) {
  Type(std::wstring(295, L'x') + L"abcde");
  // Forty pixels have room for five characters.
  EXPECT_TRUE(Take({"PutText", "Beep"}).ends_with("right font 1 colour 0 |abcde|"));
  Type(L"y");
  EXPECT_EQ(Take(), "Beep");
  EXPECT_EQ(slot_.editText, std::wstring(295, L'x') + L"abcde");
}

TEST_F(GridEditingTest, TheCaretGoesWithABoxThatIsNotShownAndIsLeftToAnotherWindow) {
  const auto draw = [&](GridCell home, std::int32_t width, bool hasFocus) {
    return [=, this] {
      PutHome(home);
      slot_.colWidth[3] = width;
      slot_.hasFocus = hasFocus;
      editing_.DrawEditBox();
    };
  };
  Type(L"a");
  ExpectAsked({"SetCaretPosition"}, {{"shown", draw({1, 1}, 50, true), "SetCaretPosition 194,46"},
                                     {"row", draw({3, 1}, 50, true), "SetCaretPosition -3,-13"},
                                     {"column", draw({1, 4}, 50, true), "SetCaretPosition -3,-13"},
                                     {"no room", draw({1, 1}, 4, true), "SetCaretPosition -3,-13"},
                                     {"no focus", draw({1, 1}, 50, false), ""}});
}

TEST_F(GridEditingTest, AParentMayEndTheEditThatHasJustBegun) {
  When("Notify 8", [&](Grid&) { GridEditing(slot_, system_).Cancel(); });
  Type(L"a");
  EXPECT_FALSE(slot_.editing);
  EXPECT_EQ(Take({"ShowCaret", "HideCaret"}), "ShowCaret; HideCaret");
}

class GridFocusTest : public GridFixture {};

TEST_F(GridFocusTest, ComesWithFrameCaretAndRepaint) {
  PutCursor({2, 1});
  slot_.cellStore.Store({2, 1}, {true, CellType::kText, L""});
  grid_.OnFocusGained();
  EXPECT_EQ(Take({"XorFrame", "Notify", "CreateCaret", "ShowCaret", "Invalidate"}),
            "XorFrame 50,42,100,63 ffffff; Notify 23 0,0; CreateCaret 3,13; InvalidateAll");
  EXPECT_TRUE(slot_.hasFocus);
  EXPECT_TRUE(slot_.currentProtected);
  EXPECT_EQ(slot_.caretHeight, 13);
  grid_.OnFocusLost();
  EXPECT_EQ(Take(), "DestroyCaret; XorFrame 50,42,100,63 ffffff; Notify 24 0,0; InvalidateAll");
  EXPECT_FALSE(slot_.hasFocus);
}

TEST_F(GridFocusTest, ScrollsToTheCursorWhoseEditGoesOn) {
  GridEditing(slot_, system_).Type(L'a');
  PutHome({50, 1});
  Take();
  grid_.OnFocusGained();
  EXPECT_EQ(Home(), (GridCell{1, 1}));
  EXPECT_EQ(Take({"CreateCaret", "ShowCaret"}), "CreateCaret 3,13; ShowCaret");
}

TEST_F(GridFocusTest, DisabledHeadingsAreGrey) {
  for (const bool enabled : {false, true}) {
    grid_.OnEnabled(enabled);
    EXPECT_EQ(slot_.headingTextColor, enabled ? 0U : 0x787878U);
    EXPECT_EQ(Take(), "InvalidateAll");
  }
}

}  // namespace
}  // namespace quillgate
