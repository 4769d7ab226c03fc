// Property sheets: what their pages are told, and what their answers do.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <prsht.h>

#include "platform/dialog/recorded_sheet.h"

namespace {

using ::testing::ElementsAre;

class SheetTest : public ::testing::Test {
 protected:
  void AddPages(DWORD flags) {
    sheet_.AddPage("a", flags, {0, 0, 100, 60});
    sheet_.AddPage("b", flags, {0, 0, 180, 140});
  }
  SheetStep Answering(UINT code, LRESULT answer) {
    return [=, this](HWND) { sheet_.Answer(code, answer); };
  }

  RecordedSheet sheet_;
};

TEST_F(SheetTest, PagesAreMadeWhenTheyAreShownUnlessAtOnce) {
  AddPages(PSP_DEFAULT);
  EXPECT_EQ(sheet_.Run({Press(PSBTN_CANCEL)}), 0);
  EXPECT_THAT(sheet_.Notified(),
              ElementsAre("a: init", "a: set active", "a: query cancel", "a: reset"));
  EXPECT_FALSE(::DestroyPropertySheetPage(sheet_.Handles()[0])) << "the sheet owns its pages";
  RecordedSheet atOnce;
  atOnce.AddPage("a", PSP_PREMATURE);
  atOnce.AddPage("b", PSP_PREMATURE);
  EXPECT_EQ(atOnce.Run({Press(PSBTN_CANCEL)}), 0);
  EXPECT_THAT(atOnce.Notified(), ElementsAre("a: init", "b: init", "a: set active",
                                             "a: query cancel", "a: reset", "b: reset"));
}

TEST_F(SheetTest, OkAppliesEveryPageThatWasMade) {
  AddPages(PSP_DEFAULT);
  sheet_.AddPage("c");
  EXPECT_GT(sheet_.Run({TurnTo(1), Press(PSBTN_OK)}), 0);
  EXPECT_THAT(sheet_.Notified(),
              ElementsAre("a: init", "a: set active", "a: kill active", "b: init", "b: set active",
                          "b: kill active", "a: apply, closing", "b: apply, closing"));
}

TEST_F(SheetTest, APageThatRefusesToApplyKeepsTheSheetOpen) {
  AddPages(PSP_DEFAULT);
  sheet_.Answer(PSN_APPLY, PSNRET_INVALID_NOCHANGEPAGE);
  EXPECT_GT(sheet_.Run({Press(PSBTN_OK), Answering(PSN_APPLY, PSNRET_NOERROR), Press(PSBTN_OK)}),
            0);
  EXPECT_THAT(sheet_.Notified(),
              ElementsAre("a: init", "a: set active", "a: kill active", "a: apply, closing",
                          "a: kill active", "a: apply, closing"));
}

TEST_F(SheetTest, AnInvalidPageComesToTheFront) {
  AddPages(PSP_PREMATURE);
  sheet_.Answer(PSN_APPLY, PSNRET_INVALID, "b");
  EXPECT_EQ(sheet_.Run({Press(PSBTN_OK)}), 0);
  EXPECT_EQ(sheet_.Shown(), "b");
}

TEST_F(SheetTest, APageThatDoesNotLetGoIsNotTurned) {
  AddPages(PSP_DEFAULT);
  sheet_.Answer(PSN_KILLACTIVE, TRUE);
  EXPECT_EQ(sheet_.Run({TurnTo(1), Press(PSBTN_OK)}), 0);
  EXPECT_THAT(sheet_.Notified(), ElementsAre("a: init", "a: set active", "a: kill active",
                                             "a: kill active", "a: query cancel", "a: reset"));
}

TEST_F(SheetTest, APageMayRefuseToBeCancelled) {
  AddPages(PSP_DEFAULT);
  sheet_.Answer(PSN_QUERYCANCEL, TRUE);
  EXPECT_EQ(sheet_.Run({Press(PSBTN_CANCEL), Answering(PSN_QUERYCANCEL, FALSE),
                        [](HWND sheet) { ::SendMessageW(sheet, WM_CLOSE, 0, 0); }}),
            0);
  EXPECT_THAT(sheet_.Notified(), ElementsAre("a: init", "a: set active", "a: query cancel",
                                             "a: query cancel", "a: reset, closing"));
}

TEST_F(SheetTest, ApplyIsEnabledAsLongAsAPageIsChanged) {
  AddPages(PSP_PREMATURE);
  std::vector<BOOL> enabled;
  const SheetStep look = [&](HWND sheet) {
    enabled.push_back(::IsWindowEnabled(::GetDlgItem(sheet, kApply)));
  };
  const auto change = [&](const char* page) -> SheetStep {
    return [this, page](HWND sheet) { PropSheet_Changed(sheet, sheet_.PageWindow(page)); };
  };
  const auto takeBack = [&](const char* page) -> SheetStep {
    return [this, page](HWND sheet) { PropSheet_UnChanged(sheet, sheet_.PageWindow(page)); };
  };
  EXPECT_GT(sheet_.Run({look, change("a"), look, change("b"), takeBack("a"), look,
                        Press(PSBTN_APPLYNOW), look, change("a"), takeBack("a"), look}),
            0)
      << "what was applied is saved, whatever follows";
  EXPECT_THAT(enabled, ElementsAre(FALSE, TRUE, TRUE, FALSE, FALSE));
}

TEST_F(SheetTest, TheLargestPageFitsBetweenTabsAndButtons) {
  AddPages(PSP_PREMATURE);
  const SheetStep look = [&](HWND sheet) {
    const RECT page = PlaceOf(sheet_.PageWindow("b"));
    const RECT tabs = PlaceOf(PropSheet_GetTabControl(sheet));
    EXPECT_LT(page.left, page.right);
    EXPECT_LT(page.top, page.bottom);
    EXPECT_LE(tabs.left, page.left);
    EXPECT_LE(tabs.top, page.top);
    EXPECT_LE(page.right, tabs.right);
    EXPECT_LE(page.bottom, tabs.bottom);
    EXPECT_LE(tabs.bottom, PlaceOf(::GetDlgItem(sheet, IDOK)).top);
  };
  EXPECT_EQ(sheet_.Run({look}), 0);
}

TEST_F(SheetTest, ASheetThatAPageDestroysAnswersZero) {
  AddPages(PSP_DEFAULT);
  EXPECT_EQ(sheet_.Run({[](HWND sheet) { ::DestroyWindow(sheet); }}), 0);
}

TEST_F(SheetTest, QuittingEndsASheetAsAFailureAndIsPassedOn) {
  AddPages(PSP_DEFAULT);
  sheet_.OnInit([](HWND) { ::PostQuitMessage(6); });
  EXPECT_EQ(sheet_.Run(), -1);
  MSG message{};
  EXPECT_FALSE(::GetMessageW(&message, nullptr, 0, 0));
}

// Outer pages "a" and "d", and inner pages "b" and "c".
class Wizard : public ::testing::Test {
 protected:
  Wizard() {
    for (const char* page : {"a", "b", "c", "d"})
      sheet_.AddPage(page, *page == 'a' || *page == 'd' ? PSP_HIDEHEADER : PSP_USEHEADERTITLE);
  }

  RecordedSheet sheet_{PSH_WIZARD97};
};

TEST_F(Wizard, PagesLetGoAreAskedForTheWayAndAreMadeOnce) {
  EXPECT_EQ(
      sheet_.Run({Press(PSBTN_NEXT), Press(PSBTN_NEXT), Press(PSBTN_BACK), Press(PSBTN_NEXT)}), 0);
  const std::vector<std::string> expected = {
      "a: init",        "a: set active",   "a: kill active", "a: next",        "b: init",
      "b: set active",  "b: kill active",  "b: next",        "c: init",        "c: set active",
      "c: kill active", "c: back",         "b: set active",  "b: kill active", "b: next",
      "c: set active",  "c: query cancel", "a: reset",       "b: reset",       "c: reset"};
  EXPECT_EQ(sheet_.Notified(), expected);
}

TEST_F(Wizard, NextIsTheDefaultButtonUntilAPageChoosesOne) {
  constexpr int kNext = 0x3024;
  LRESULT chosen = 0;
  sheet_.OnInit([&](HWND page) { chosen = ::SendMessageW(::GetParent(page), DM_GETDEFID, 0, 0); });
  sheet_.Run({Press(PSBTN_CANCEL)});
  EXPECT_EQ(chosen, MAKELONG(kNext, DC_HASDEFID));
}

TEST_F(Wizard, FinishEndsItUnlessThePageKeepsIt) {
  sheet_.Answer(PSN_WIZNEXT, sheet_.TemplateOf(3), "a");
  EXPECT_GT(sheet_.Run({Press(PSBTN_NEXT), Press(PSBTN_FINISH)}), 0);
  EXPECT_EQ(sheet_.Notified().back(), "d: finish");
  sheet_.Answer(PSN_WIZFINISH, TRUE);
  sheet_.Answer(PSN_SETACTIVE, -1, "c");
  EXPECT_EQ(sheet_.Run({Press(PSBTN_NEXT), Press(PSBTN_FINISH), Press(PSBTN_BACK)}), 0);
  EXPECT_EQ(sheet_.Shown(), "b") << "a page that is skipped is skipped on the way back too";
  const SheetStep nameCancel = [&](HWND sheet) {
    sheet_.Answer(PSN_WIZFINISH, reinterpret_cast<LRESULT>(::GetDlgItem(sheet, IDCANCEL)));
  };
  const SheetStep look = [](HWND) {
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), IDCANCEL) << "the page names what gets the focus";
  };
  EXPECT_EQ(sheet_.Run({Press(PSBTN_NEXT), nameCancel, Press(PSBTN_FINISH), look}), 0);
}

TEST_F(Wizard, AnswersChooseThePage) {
  using Case = std::tuple<UINT, LRESULT, const char*, const char*>;
  for (const auto& [code, answer, page, shown] :
       {Case{PSN_WIZNEXT, -1, "a", "a"}, Case{PSN_WIZNEXT, sheet_.TemplateOf(2), "a", "c"},
        Case{PSN_WIZNEXT, 9999, "a", "a"}, Case{PSN_KILLACTIVE, TRUE, "a", "a"},
        Case{PSN_SETACTIVE, -1, "b", "c"}, Case{PSN_SETACTIVE, sheet_.TemplateOf(3), "b", "d"}}) {
    sheet_.Answer(code, answer, page);
    sheet_.Run({Press(PSBTN_NEXT)});
    EXPECT_EQ(sheet_.Shown(), shown) << code << " " << answer;
    sheet_.Answer(code, 0, page);
  }
}

}  // namespace
