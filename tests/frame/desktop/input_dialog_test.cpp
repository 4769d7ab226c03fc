#include "frame/input_dialog.h"

#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

class InputDialogTest : public FrameTest {
 protected:
  std::optional<std::wstring> Run(const std::function<void(DesktopScript&, QWidget*)>& user) {
    DesktopScript script(
        [&](DesktopScript& steps) { user(steps, steps.AwaitWindow("Add new user")); });
    return InputDialog(ui_).Run(window_->Get(), kMsgAddNewUser, kMsgUserNameLabel);
  }
};

TEST_F(InputDialogTest, TheTextIsWhatWasEnteredAndMayBeEmptyCancelAnswersNothing) {
  for (const auto& [text, button, answer] :
       {std::tuple{"Anna O", IDOK, std::optional<std::wstring>(L"Anna O")},
        {"", IDOK, L""},
        {"Anna", IDCANCEL, std::nullopt}}) {
    EXPECT_EQ(
        Run([&](DesktopScript& script, QWidget* window) {
          for (const auto& [id, shown] :
               {std::pair{IDC_INPUT_PROMPT, "User name:"}, {IDOK, "OK"}, {IDCANCEL, "Cancel"}})
            EXPECT_EQ(script.TextOf(script.Child(window, id)), shown);
          script.Type(window, IDC_INPUT_EDIT, text);
          script.Click(window, button);
        }),
        answer);
  }
}

TEST_F(InputDialogTest, MoreThan511CharactersCannotBeEntered) {
  EXPECT_EQ(Run([](DesktopScript& script, QWidget* window) {
              script.Type(window, IDC_INPUT_EDIT, QString(520, 'a'));
              script.Click(window, IDOK);
            }),
            std::wstring(511, L'a'));
}

}  // namespace
}  // namespace quillgate
