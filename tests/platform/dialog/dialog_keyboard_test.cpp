// What keys do in dialogs, given to them as loops give them.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/dialog/own_control.h"
#include "platform/dialog/scripted_dialog.h"

namespace {

using ::testing::ElementsAre;

class DialogKeyboard : public ::testing::Test {
 protected:
  DialogKeyboard() {
    dialog_.On(WM_COMMAND, [this](HWND, WPARAM wParam, LPARAM) -> INT_PTR {
      if (HIWORD(wParam) == BN_CLICKED) commands_.push_back(LOWORD(wParam));
      return TRUE;
    });
    dialog_.Show();
    DispatchAll();
    ::SendMessageW(Item(kFirstKind), BM_SETCHECK, BST_CHECKED, 0);
    Focus(kName);
  }

  HWND Item(int id) const { return ::GetDlgItem(dialog_.Window(), id); }
  void Focus(int id) const { ::SetFocus(Item(id)); }
  // Gives the key to the control that has the keyboard, and says which one has it then.
  int Press(WPARAM key) {
    MSG message = {::GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    EXPECT_TRUE(::IsDialogMessageW(dialog_.Window(), &message));
    DispatchAll();
    return ::GetDlgCtrlID(::GetFocus());
  }

  ScriptedDialog dialog_;
  std::vector<int> commands_;
};

TEST_F(DialogKeyboard, TabGoesRoundInTheOrderOfTheTemplate) {
  for (const int id : {kFirstKind, kCheck, IDOK, IDCANCEL, kOther, kName})
    EXPECT_EQ(Press(VK_TAB), id);
}

TEST_F(DialogKeyboard, AButtonIsTheDefaultOneWhileItHasTheFocus) {
  Focus(kCheck);
  for (const int id : {IDOK, IDCANCEL, kOther, kName}) {
    Press(VK_TAB);
    for (const int button : {IDOK, IDCANCEL, kOther}) {
      const LRESULT code = ::SendMessageW(Item(button), WM_GETDLGCODE, 0, 0);
      EXPECT_EQ((code & DLGC_DEFPUSHBUTTON) != 0, button == (id == kName ? IDOK : id)) << id;
    }
  }
}

TEST_F(DialogKeyboard, TabComesToTheChosenButtonOfAGroup) {
  ::SendMessageW(Item(kFirstKind), BM_SETCHECK, BST_UNCHECKED, 0);
  ::SendMessageW(Item(kSecondKind), BM_SETCHECK, BST_CHECKED, 0);
  EXPECT_EQ(Press(VK_TAB), kSecondKind);
  EXPECT_EQ(Press(VK_TAB), kCheck);
}

TEST_F(DialogKeyboard, AFieldThatTabComesToIsSelectedWhole) {
  Focus(kOther);
  ::SendMessageW(Item(kName), EM_SETSEL, 0, 0);
  EXPECT_EQ(Press(VK_TAB), kName);
  EXPECT_EQ(::SendMessageW(Item(kName), EM_GETSEL, 0, 0), MAKELONG(0, 4));
}

TEST_F(DialogKeyboard, DisabledAndHiddenControlsArePassedOver) {
  ::EnableWindow(Item(kFirstKind), FALSE);
  ::ShowWindow(Item(kCheck), SW_HIDE);
  EXPECT_EQ(Press(VK_TAB), IDOK);
}

TEST_F(DialogKeyboard, ArrowsChooseInsideTheGroupOnly) {
  Focus(kFirstKind);
  for (const auto& [key, id] : {std::pair{VK_DOWN, kSecondKind},
                                {VK_RIGHT, kThirdKind},
                                {VK_DOWN, kFirstKind},
                                {VK_UP, kThirdKind},
                                {VK_LEFT, kSecondKind}}) {
    EXPECT_EQ(Press(static_cast<WPARAM>(key)), id);
    for (const int each : {kFirstKind, kSecondKind, kThirdKind})
      EXPECT_EQ(::SendMessageW(Item(each), BM_GETCHECK, 0, 0), each == id ? 1 : 0) << each;
  }
}

TEST_F(DialogKeyboard, EnterAndEscapePressButtons) {
  for (const auto& [focused, disabled, key, pressed] :
       {std::tuple{kName, 0, WPARAM{VK_RETURN}, IDOK},
        {kCheck, 0, VK_RETURN, IDOK},
        {kOther, 0, VK_RETURN, kOther},
        {kName, 0, VK_ESCAPE, IDCANCEL},
        {kName, IDOK, VK_RETURN, 0},
        {kName, IDCANCEL, VK_ESCAPE, 0}}) {
    commands_ = {0};
    ::SendMessageW(dialog_.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(focused)), TRUE);
    ::EnableWindow(Item(disabled), FALSE);
    Press(key);
    EXPECT_EQ(commands_.back(), pressed) << "key " << key << " in control " << focused;
    ::EnableWindow(Item(disabled), TRUE);
  }
}

constexpr LRESULT kLikeAGrid = DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_DEFPUSHBUTTON;

TEST_F(DialogKeyboard, AControlGetsTheKeysThatItsCodeWants) {
  using Case = std::pair<LRESULT, std::vector<WPARAM>>;
  for (const auto& [code, kept] : {Case{kLikeAGrid, {VK_DOWN}},
                                   Case{DLGC_WANTALLKEYS, {VK_TAB, VK_RETURN, VK_ESCAPE, VK_DOWN}},
                                   Case{DLGC_WANTTAB, {VK_TAB}}, Case{0, {}}}) {
    OwnControl control(code, dialog_.Window());
    for (const WPARAM key : {VK_TAB, VK_RETURN, VK_ESCAPE, VK_DOWN}) {
      ::SetFocus(control.Window());
      Press(key);
    }
    EXPECT_EQ(control.Keys(), kept) << code;
    EXPECT_THAT(control.Questions(), ElementsAre(VK_TAB, VK_RETURN, VK_ESCAPE, VK_DOWN));
  }
}

TEST_F(DialogKeyboard, EnterIsACommandOfAControlThatIsADefaultButtonElseOfTheDialogsOne) {
  for (const auto& [code, pressed] :
       {std::pair{kLikeAGrid, OwnControl::kId}, {DLGC_WANTCHARS, IDOK}}) {
    const OwnControl control(code, dialog_.Window());
    ::SetFocus(control.Window());
    commands_.clear();
    Press(VK_RETURN);
    EXPECT_THAT(commands_, ElementsAre(pressed)) << code;
  }
}

TEST_F(DialogKeyboard, MessagesOfOtherWindowsAreNotTheDialogs) {
  MSG key = {nullptr, WM_KEYDOWN, VK_TAB, 1, 0, {}};
  EXPECT_FALSE(::IsDialogMessageW(dialog_.Window(), &key));
  EXPECT_FALSE(::IsDialogMessageW(dialog_.Window(), nullptr));
}

}  // namespace
