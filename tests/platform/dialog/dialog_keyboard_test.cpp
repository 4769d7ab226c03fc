// Dialogs used with the keyboard.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

#include "desktop/dialog_driver.h"
#include "platform/dialog/scripted_dialog.h"
#include "platform/dialog/template_bytes.h"

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT | DS_CENTER;
constexpr DWORD kItem = WS_CHILD | WS_VISIBLE;
constexpr DWORD kStop = kItem | WS_TABSTOP;

constexpr int kLabel = 1000;
constexpr int kName = 1001;
constexpr int kFirstKind = 1002;
constexpr int kSecondKind = 1003;
constexpr int kThirdKind = 1004;
constexpr int kCheck = 1005;
constexpr int kOther = 1006;
constexpr DWORD kNameHelp = 0x80690001;
constexpr DWORD kDialogHelp = 0x80690000;

LPCWSTR Form() {
  static const LPCWSTR name = [] {
    TemplateBytes bytes(kStyle, {0, 0, 200, 120}, u"Form", kDialogHelp);
    bytes.Item(u"Static", kLabel, kItem, {5, 5, 60, 10}, u"&Name:");
    bytes.Item(u"Edit", kName, kStop, {70, 5, 100, 14}, u"text", kNameHelp);
    bytes.Item(0x80, kFirstKind, kStop | WS_GROUP | BS_AUTORADIOBUTTON, {5, 25, 60, 12}, u"One");
    bytes.Item(0x80, kSecondKind, kItem | BS_AUTORADIOBUTTON, {5, 38, 60, 12}, u"Two");
    bytes.Item(0x80, kThirdKind, kItem | BS_AUTORADIOBUTTON, {5, 51, 60, 12}, u"Three");
    bytes.Item(0x80, kCheck, kStop | WS_GROUP | BS_AUTOCHECKBOX, {5, 70, 80, 12}, u"&Check");
    bytes.Item(0x80, IDOK, kStop | BS_DEFPUSHBUTTON, {5, 95, 50, 14}, u"OK");
    bytes.Item(0x80, IDCANCEL, kStop, {60, 95, 50, 14}, u"Cancel");
    bytes.Item(0x80, kOther, kStop, {115, 95, 50, 14}, u"&Other");
    return AddTemplate(bytes);
  }();
  return name;
}

int FocusedId() {
  const QWidget* widget = QApplication::focusWidget();
  return widget != nullptr ? widget->objectName().toInt() : 0;
}

class DialogKeyboard : public ::testing::Test {
 protected:
  DialogKeyboard() {
    dialog_.EndOnCommands();
    dialog_.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
      ::CheckRadioButton(window, kFirstKind, kThirdKind, kFirstKind);
      return TRUE;
    });
  }

  INT_PTR Run(std::function<void(DesktopScript&, QWidget*)> body) {
    const DesktopScript script([&](DesktopScript& user) { body(user, user.AwaitWindow("Form")); });
    return dialog_.Run(Form());
  }

  ScriptedDialog dialog_;
};

void AwaitFocus(DesktopScript& user, int id) {
  user.Await([id] { return FocusedId() == id; }, QString("focus on %1").arg(id));
}

TEST_F(DialogKeyboard, TabGoesRoundInTheOrderOfTheTemplate) {
  const INT_PTR result = Run([](DesktopScript& user, QWidget*) {
    AwaitFocus(user, kName);
    for (const int id : {kFirstKind, kCheck, IDOK, IDCANCEL, kOther, kName}) {
      user.Key(Qt::Key_Tab);
      AwaitFocus(user, id);
    }
    for (const int id : {kOther, IDCANCEL}) {
      user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
      AwaitFocus(user, id);
    }
    user.Key(Qt::Key_Escape);
  });
  EXPECT_EQ(result, IDCANCEL);
}

TEST_F(DialogKeyboard, TabComesToTheChosenButtonOfAGroup) {
  dialog_.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    return ::CheckRadioButton(window, kFirstKind, kThirdKind, kSecondKind);
  });
  Run([](DesktopScript& user, QWidget*) {
    AwaitFocus(user, kName);
    for (const int id : {kSecondKind, kCheck}) {
      user.Key(Qt::Key_Tab);
      AwaitFocus(user, id);
    }
    user.Key(Qt::Key_Escape);
  });
}

TEST_F(DialogKeyboard, AFieldThatTabComesToIsSelectedWhole) {
  QString selected;
  Run([&](DesktopScript& user, QWidget* window) {
    AwaitFocus(user, kName);
    user.Key(Qt::Key_Tab);
    user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
    AwaitFocus(user, kName);
    auto* field = qobject_cast<QLineEdit*>(user.Child(window, kName));
    user.Do([&] { selected = field->selectedText(); });
    user.Key(Qt::Key_Escape);
  });
  EXPECT_EQ(selected, "text");
}

TEST_F(DialogKeyboard, DisabledAndHiddenControlsArePassedOver) {
  dialog_.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::EnableWindow(::GetDlgItem(window, kFirstKind), FALSE);
    ::ShowWindow(::GetDlgItem(window, kCheck), SW_HIDE);
    return TRUE;
  });
  Run([](DesktopScript& user, QWidget*) {
    AwaitFocus(user, kName);
    user.Key(Qt::Key_Tab);
    AwaitFocus(user, IDOK);
    user.Key(Qt::Key_Escape);
  });
}

TEST_F(DialogKeyboard, ArrowsChooseInsideTheGroupOnly) {
  UINT chosen = 0;
  Run([&](DesktopScript& user, QWidget*) {
    user.Key(Qt::Key_Tab);
    AwaitFocus(user, kFirstKind);
    for (const int id : {kSecondKind, kThirdKind, kFirstKind}) {
      user.Key(Qt::Key_Down);
      AwaitFocus(user, id);
      user.Await([&, id] { return ::IsDlgButtonChecked(dialog_.Window(), id) == BST_CHECKED; },
                 QString("mark at %1").arg(id));
    }
    user.Key(Qt::Key_Up);
    AwaitFocus(user, kThirdKind);
    user.Await([&] { return ::IsDlgButtonChecked(dialog_.Window(), kThirdKind) != 0; }, "mark");
    user.Do([&] { chosen = ::IsDlgButtonChecked(dialog_.Window(), kFirstKind); });
    user.Key(Qt::Key_Escape);
  });
  EXPECT_EQ(chosen, static_cast<UINT>(BST_UNCHECKED));
}

TEST_F(DialogKeyboard, EnterPressesTheButtonWithTheKeyboardOrElseTheDefaultOne) {
  EXPECT_EQ(Run([](DesktopScript& user, QWidget*) {
              AwaitFocus(user, kName);
              user.Key(Qt::Key_Return);
            }),
            IDOK);
  for (const bool byUser : {true, false}) {
    EXPECT_EQ(Run([&](DesktopScript& user, QWidget* window) {
                QWidget* other = user.Child(window, kOther);
                const auto reason = byUser ? Qt::TabFocusReason : Qt::OtherFocusReason;
                user.Do([&] { other->setFocus(reason); });
                user.Key(Qt::Key_Return);
              }),
              byUser ? kOther : IDOK);
  }
  EXPECT_EQ(Run([](DesktopScript& user, QWidget* window) {
              user.Do([&] { window->findChild<QWidget*>(QString::number(kCheck))->setFocus(); });
              user.Key(Qt::Key_Enter, Qt::KeypadModifier);
            }),
            IDOK);
}

TEST_F(DialogKeyboard, TheButtonWithTheKeyboardLooksLikeTheDefaultOne) {
  const auto isDefault = [](QWidget* window, int id) {
    return window->findChild<QPushButton*>(QString::number(id))->isDefault();
  };
  Run([&](DesktopScript& user, QWidget* window) {
    const auto marked = [&](int id, int other) {
      user.Await([&] { return isDefault(window, id) && !isDefault(window, other); },
                 QString("default look of %1").arg(id));
    };
    AwaitFocus(user, kName);
    marked(IDOK, kOther);
    user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
    marked(kOther, IDOK);
    user.Key(Qt::Key_Tab);
    marked(IDOK, kOther);
    user.Key(Qt::Key_Escape);
  });
}

TEST_F(DialogKeyboard, ADisabledDefaultButtonIsNotPressed) {
  dialog_.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
    ::EnableWindow(::GetDlgItem(window, IDOK), FALSE);
    return TRUE;
  });
  EXPECT_EQ(Run([](DesktopScript& user, QWidget*) {
              AwaitFocus(user, kName);
              user.Key(Qt::Key_Return);
              user.Key(Qt::Key_Escape);
            }),
            IDCANCEL);
}

TEST_F(DialogKeyboard, MnemonicsWork) {
  EXPECT_EQ(Run([](DesktopScript& user, QWidget*) {
              AwaitFocus(user, kName);
              user.Key(Qt::Key_Tab);
              AwaitFocus(user, kFirstKind);
              user.Key(Qt::Key_N, Qt::AltModifier);
              AwaitFocus(user, kName);
              user.Key(Qt::Key_O, Qt::AltModifier);
            }),
            kOther);
}

TEST_F(DialogKeyboard, ClicksAndTheCloseBoxEndItToo) {
  EXPECT_EQ(Run([](DesktopScript& user, QWidget* window) { user.Click(window, kOther); }), kOther);
  EXPECT_EQ(Run([](DesktopScript& user, QWidget* window) { user.Do([&] { window->close(); }); }),
            IDCANCEL);
}

TEST_F(DialogKeyboard, F1AsksForTheHelpOfTheControlWithTheKeyboard) {
  std::vector<HELPINFO> requests;
  dialog_.On(WM_HELP, [&](HWND, WPARAM, LPARAM lParam) -> INT_PTR {
    requests.push_back(*reinterpret_cast<const HELPINFO*>(lParam));
    return TRUE;
  });
  Run([](DesktopScript& user, QWidget*) {
    AwaitFocus(user, kName);
    user.Key(Qt::Key_F1);
    user.Key(Qt::Key_Tab);
    AwaitFocus(user, kFirstKind);
    user.Key(Qt::Key_F1);
    user.Key(Qt::Key_Escape);
  });
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].cbSize, sizeof(HELPINFO));
  EXPECT_EQ(requests[0].iContextType, HELPINFO_WINDOW);
  EXPECT_EQ(requests[0].iCtrlId, kName);
  EXPECT_EQ(requests[0].dwContextId, kNameHelp);
  EXPECT_EQ(requests[1].iCtrlId, kFirstKind);
  EXPECT_EQ(requests[1].dwContextId, 0u);
}

TEST_F(DialogKeyboard, ADisabledDialogTakesNoInputAndIsNotClosed) {
  dialog_.On(WM_COMMAND, [](HWND window, WPARAM wParam, LPARAM) -> INT_PTR {
    if (LOWORD(wParam) == kOther) ::MessageBoxW(window, L"Question?", L"Box", MB_OK);
    if (LOWORD(wParam) == IDOK) ::EndDialog(window, IDOK);
    if (LOWORD(wParam) == IDCANCEL) ::EndDialog(window, IDCANCEL);
    return TRUE;
  });
  bool stayed = false;
  EXPECT_EQ(Run([&](DesktopScript& user, QWidget* window) {
              user.Click(window, kOther);
              QWidget* box = user.AwaitWindow("Box");
              user.Do([&] { window->close(); });
              user.Do([&] { stayed = window->isVisible() && window->isEnabled(); });
              user.Click(box, IDOK);
              user.AwaitNoWindow("Box");
              user.Click(window, IDOK);
            }),
            IDOK);
  EXPECT_TRUE(stayed);
}

// A window of the program's own class that is the last control of the dialog.
class OwnControl {
 public:
  explicit OwnControl(LRESULT code) : code_(code) {
    WNDCLASSW own{};
    own.lpfnWndProc = Procedure;
    own.hInstance = ::GetModuleHandleW(nullptr);
    own.lpszClassName = L"OwnControl";
    ::RegisterClassW(&own);
    current_ = this;
  }
  ~OwnControl() { current_ = nullptr; }
  OwnControl(const OwnControl&) = delete;
  OwnControl& operator=(const OwnControl&) = delete;

  void CreateIn(HWND dialog) {
    window_ = ::CreateWindowExW(0, L"OwnControl", L"", kStop, 200, 60, 60, 40, dialog,
                                reinterpret_cast<HMENU>(UINT_PTR{kId}), nullptr, nullptr);
  }
  HWND Window() const { return window_; }
  // Keys that it was given, and characters.
  const std::vector<WPARAM>& Keys() const { return keys_; }
  const std::vector<WPARAM>& Characters() const { return characters_; }
  // The keys that it was asked about, each with its message.
  const std::vector<WPARAM>& Questions() const { return questions_; }

  static constexpr int kId = 1500;

 private:
  LRESULT Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
      case WM_GETDLGCODE:
        if (const auto* key = reinterpret_cast<const MSG*>(lParam)) {
          EXPECT_EQ(key->hwnd, window);
          EXPECT_EQ(key->wParam, wParam);
          questions_.push_back(wParam);
        }
        return code_;
      case WM_KEYDOWN:
        keys_.push_back(wParam);
        return 0;
      case WM_CHAR:
        characters_.push_back(wParam);
        return 0;
      default:
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
  }
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return current_ != nullptr ? current_->Answer(window, message, wParam, lParam)
                               : ::DefWindowProcW(window, message, wParam, lParam);
  }

  static inline OwnControl* current_ = nullptr;
  const LRESULT code_;
  HWND window_ = nullptr;
  std::vector<WPARAM> keys_;
  std::vector<WPARAM> characters_;
  std::vector<WPARAM> questions_;
};

constexpr LRESULT kLikeAGrid = DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_DEFPUSHBUTTON;

class OwnControlInDialog : public DialogKeyboard {
 protected:
  // Runs the script with the keyboard on the control.
  INT_PTR RunIn(OwnControl& control, std::function<void(DesktopScript&)> body) {
    dialog_.On(WM_INITDIALOG, [&](HWND window, WPARAM, LPARAM) -> INT_PTR {
      control.CreateIn(window);
      ::SetFocus(control.Window());
      return FALSE;
    });
    return Run([&](DesktopScript& user, QWidget*) {
      AwaitFocus(user, OwnControl::kId);
      body(user);
    });
  }
};

TEST_F(OwnControlInDialog, TabComesToItAndGoesOn) {
  OwnControl control(kLikeAGrid);
  EXPECT_EQ(RunIn(control,
                  [](DesktopScript& user) {
                    for (const int id : {kName, kFirstKind}) {
                      user.Key(Qt::Key_Tab);
                      AwaitFocus(user, id);
                    }
                    for (const int id : {kName, OwnControl::kId, kOther}) {
                      user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
                      AwaitFocus(user, id);
                    }
                    user.Key(Qt::Key_Tab);
                    AwaitFocus(user, OwnControl::kId);
                    user.Key(Qt::Key_Escape);
                  }),
            IDCANCEL);
}

TEST_F(OwnControlInDialog, ItGetsTheArrowsAndCharactersThatItWants) {
  OwnControl control(kLikeAGrid);
  EXPECT_EQ(RunIn(control,
                  [&](DesktopScript& user) {
                    user.Key(Qt::Key_Down);
                    user.Key(Qt::Key_X);
                    user.Await([&] { return !control.Characters().empty(); }, "character");
                    user.Key(Qt::Key_Escape);
                  }),
            IDCANCEL);
  EXPECT_THAT(control.Keys(), ::testing::ElementsAre(VK_DOWN, 'X'));
  EXPECT_THAT(control.Characters(), ::testing::ElementsAre('x'));
  EXPECT_THAT(control.Questions(), ::testing::IsSupersetOf({VK_DOWN, VK_ESCAPE}));
}

TEST_F(OwnControlInDialog, EnterIsACommandOfAControlThatIsADefaultButton) {
  OwnControl control(kLikeAGrid);
  std::vector<std::pair<WPARAM, HWND>> commands;
  dialog_.On(WM_COMMAND, [&](HWND window, WPARAM wParam, LPARAM lParam) -> INT_PTR {
    commands.emplace_back(wParam, reinterpret_cast<HWND>(lParam));
    ::EndDialog(window, LOWORD(wParam));
    return TRUE;
  });
  EXPECT_EQ(RunIn(control, [](DesktopScript& user) { user.Key(Qt::Key_Return); }), OwnControl::kId);
  ASSERT_FALSE(commands.empty());
  EXPECT_EQ(commands[0], std::pair(MAKEWPARAM(OwnControl::kId, BN_CLICKED), control.Window()));
  EXPECT_THAT(control.Questions(), ::testing::Contains(WPARAM{VK_RETURN}));
  EXPECT_THAT(control.Keys(), ::testing::IsEmpty());
}

TEST_F(OwnControlInDialog, EnterPressesTheDefaultButtonForAnyOtherControl) {
  OwnControl control(DLGC_WANTCHARS);
  EXPECT_EQ(RunIn(control, [](DesktopScript& user) { user.Key(Qt::Key_Return); }), IDOK);
}

TEST_F(OwnControlInDialog, AControlThatWantsAllKeysGetsThem) {
  OwnControl control(DLGC_WANTALLKEYS);
  EXPECT_EQ(RunIn(control,
                  [&](DesktopScript& user) {
                    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Escape})
                      user.Key(key);
                    user.Await([&] { return control.Keys().size() == 3; }, "third key");
                    user.Do([&] { ::EndDialog(dialog_.Window(), kOther); });
                  }),
            kOther);
  EXPECT_THAT(control.Keys(), ::testing::ElementsAre(VK_TAB, VK_RETURN, VK_ESCAPE));
  EXPECT_THAT(control.Characters(), ::testing::ElementsAre(9, 13, 27));
}

TEST_F(OwnControlInDialog, ArrowsThatItDoesNotWantGoOnInTheGroup) {
  OwnControl control(0);
  RunIn(control, [](DesktopScript& user) {
    user.Key(Qt::Key_Up);
    AwaitFocus(user, kOther);
    user.Key(Qt::Key_Escape);
  });
  EXPECT_THAT(control.Keys(), ::testing::IsEmpty());
}

TEST_F(OwnControlInDialog, AModelessDialogsLoopAsksTheSame) {
  OwnControl control(kLikeAGrid);
  dialog_.On(WM_INITDIALOG, [](HWND, WPARAM, LPARAM) -> INT_PTR { return TRUE; });
  const HWND dialog = dialog_.Create(Form());
  control.CreateIn(dialog);
  MSG key = {control.Window(), WM_KEYDOWN, VK_DOWN, 1, 0, {}};
  EXPECT_TRUE(::IsDialogMessageW(dialog, &key));
  EXPECT_THAT(control.Keys(), ::testing::ElementsAre(VK_DOWN));
  key.wParam = VK_RETURN;
  EXPECT_TRUE(::IsDialogMessageW(dialog, &key));
  EXPECT_THAT(control.Keys(), ::testing::ElementsAre(VK_DOWN)) << "Enter is the dialog's";
  key.hwnd = nullptr;
  EXPECT_FALSE(::IsDialogMessageW(dialog, &key));
  EXPECT_FALSE(::IsDialogMessageW(control.Window(), nullptr));
}

}  // namespace
