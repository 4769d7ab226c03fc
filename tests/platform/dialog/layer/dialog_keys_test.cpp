// The user at a modal dialog: keys, clicks, the close box and what the buttons look like.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <optional>

#include "desktop/dialog_driver.h"
#include "platform/dialog/own_control.h"
#include "platform/dialog/scripted_dialog.h"

namespace {

using ::testing::ElementsAre;

class DialogKeys : public ::testing::Test {
 protected:
  DialogKeys() {
    dialog_.On(WM_COMMAND, [](HWND window, WPARAM wParam, LPARAM) -> INT_PTR {
      const int id = LOWORD(wParam);
      const bool isButton = id == IDOK || id == IDCANCEL || id == kOther;
      if (isButton && HIWORD(wParam) == BN_CLICKED) ::EndDialog(window, id);
      return TRUE;
    });
    dialog_.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
      ::SendMessageW(::GetDlgItem(window, kFirstKind), BM_SETCHECK, BST_CHECKED, 0);
      return TRUE;
    });
  }

  INT_PTR Run(std::function<void(DesktopScript&, QWidget*)> body) {
    const DesktopScript script([&](DesktopScript& user) { body(user, user.AwaitWindow("Form")); });
    return dialog_.Run();
  }
  // With a control of that code that has the keyboard.
  void RunIn(LRESULT code, std::function<void(DesktopScript&)> body) {
    dialog_.On(WM_INITDIALOG, [&, code](HWND window, WPARAM, LPARAM) -> INT_PTR {
      control_.emplace(code, window);
      ::SetFocus(control_->Window());
      return FALSE;
    });
    Run([&](DesktopScript& user, QWidget*) {
      AwaitFocus(user, OwnControl::kId);
      body(user);
    });
  }
  static void AwaitFocus(DesktopScript& user, int id) {
    const auto hasFocus = [id] {
      const QWidget* widget = QApplication::focusWidget();
      return widget != nullptr && widget->objectName().toInt() == id;
    };
    user.Await(hasFocus, QString("focus on %1").arg(id));
  }

  ScriptedDialog dialog_;
  std::optional<OwnControl> control_;
};

TEST_F(DialogKeys, TabAndArrowsMoveTheFocus) {
  EXPECT_EQ(Run([](DesktopScript& user, QWidget*) {
              AwaitFocus(user, kName);
              user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
              AwaitFocus(user, kOther);
              for (const auto& [key, id] : {std::pair{Qt::Key_Tab, kName},
                                            {Qt::Key_Tab, kFirstKind},
                                            {Qt::Key_Down, kSecondKind},
                                            {Qt::Key_Up, kFirstKind},
                                            {Qt::Key_Left, kThirdKind},
                                            {Qt::Key_Right, kFirstKind}}) {
                user.Key(key);
                AwaitFocus(user, id);
              }
              user.Key(Qt::Key_Escape);
            }),
            IDCANCEL);
}

TEST_F(DialogKeys, EnterPressesTheButtonThatTheUserWentToOrElseTheDefaultOne) {
  for (const auto& [id, reason, pressed] : {std::tuple{kName, Qt::TabFocusReason, IDOK},
                                            {kOther, Qt::TabFocusReason, kOther},
                                            {kOther, Qt::OtherFocusReason, IDOK},
                                            {kCheck, Qt::OtherFocusReason, IDOK}}) {
    EXPECT_EQ(Run([&](DesktopScript& user, QWidget* window) {
                QWidget* control = user.Child(window, id);
                user.Do([&] { control->setFocus(reason); });
                user.Key(Qt::Key_Enter, Qt::KeypadModifier);
              }),
              pressed)
        << id;
  }
}

TEST_F(DialogKeys, MnemonicsWork) {
  EXPECT_EQ(Run([](DesktopScript& user, QWidget*) {
              user.Key(Qt::Key_Tab);
              AwaitFocus(user, kFirstKind);
              user.Key(Qt::Key_N, Qt::AltModifier);
              AwaitFocus(user, kName);
              user.Key(Qt::Key_O, Qt::AltModifier);
            }),
            kOther);
}

TEST_F(DialogKeys, ClicksAndTheCloseBoxEndItToo) {
  EXPECT_EQ(Run([](DesktopScript& user, QWidget* window) { user.Click(window, kOther); }), kOther);
  EXPECT_EQ(Run([](DesktopScript& user, QWidget* window) { user.Do([&] { window->close(); }); }),
            IDCANCEL);
}

TEST_F(DialogKeys, F1AsksForTheHelpOfTheControlWithTheFocus) {
  using Request = std::tuple<UINT, int, int, DWORD_PTR>;
  std::vector<Request> requests;
  dialog_.On(WM_HELP, [&](HWND, WPARAM, LPARAM lParam) -> INT_PTR {
    const auto& info = *reinterpret_cast<const HELPINFO*>(lParam);
    requests.emplace_back(info.cbSize, info.iContextType, info.iCtrlId, info.dwContextId);
    return TRUE;
  });
  Run([](DesktopScript& user, QWidget*) {
    AwaitFocus(user, kName);
    user.Key(Qt::Key_F1);
    user.Key(Qt::Key_Tab);
    AwaitFocus(user, kFirstKind);
    user.Key(Qt::Key_F1, Qt::ShiftModifier);
    user.Key(Qt::Key_Escape);
  });
  constexpr UINT kSize = sizeof(HELPINFO);
  EXPECT_THAT(requests, ElementsAre(Request{kSize, HELPINFO_WINDOW, kName, kNameHelp},
                                    Request{kSize, HELPINFO_WINDOW, kFirstKind, 0}));
}

TEST_F(DialogKeys, ADisabledDialogTakesNoInputAndIsNotClosed) {
  EXPECT_EQ(Run([&](DesktopScript& user, QWidget* window) {
              user.Post([&] { ::MessageBoxW(dialog_.Window(), L"Question?", L"Box", MB_OK); });
              QWidget* box = user.AwaitWindow("Box");
              user.Do([&] { window->close(); });
              user.Do([&] { EXPECT_TRUE(window->isVisible() && window->isEnabled()); });
              user.Click(box, IDOK);
              user.AwaitNoWindow("Box");
              user.Click(window, IDOK);
            }),
            IDOK);
}

TEST_F(DialogKeys, AControlOfAProgramGetsTheArrowsAndCharactersThatItWants) {
  RunIn(DLGC_WANTARROWS | DLGC_WANTCHARS, [&](DesktopScript& user) {
    user.Key(Qt::Key_Down);
    user.Key(Qt::Key_X);
    user.Await([&] { return !control_->Characters().empty(); }, "character");
    user.Key(Qt::Key_Tab);
    AwaitFocus(user, kName);
    for (const int id : {OwnControl::kId, kOther}) {
      user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
      AwaitFocus(user, id);
    }
    user.Key(Qt::Key_Escape);
  });
  EXPECT_THAT(control_->Keys(), ElementsAre(VK_DOWN, 'X', VK_SHIFT));
  EXPECT_THAT(control_->Characters(), ElementsAre('x'));
}

TEST_F(DialogKeys, AControlOfAProgramThatWantsAllKeysGetsThem) {
  RunIn(DLGC_WANTALLKEYS, [&](DesktopScript& user) {
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Escape})
      user.Key(key);
    user.Await([&] { return control_->Keys().size() == 3; }, "third key");
    user.Do([&] { ::EndDialog(dialog_.Window(), kOther); });
  });
  EXPECT_THAT(control_->Keys(), ElementsAre(VK_TAB, VK_RETURN, VK_ESCAPE));
  EXPECT_THAT(control_->Characters(), ElementsAre(9, 13, 27));
}

}  // namespace
