#include "frame/input_dialog.h"

#include <QLineEdit>

#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

class InputDialogTest : public FrameTest {
 protected:
  std::optional<std::wstring> Run(const std::function<void(DesktopScript&, QWidget*)>& user) {
    DesktopScript script(
        [&](DesktopScript& steps) { user(steps, steps.AwaitWindow("Add new user")); });
    return InputDialog(ui_).Run(window_.Window(), kMsgAddNewUser, kMsgUserNameLabel);
  }
};

TEST_F(InputDialogTest, TheTextIsWhatWasEnteredAndMayBeEmpty) {
  EXPECT_EQ(Run([](DesktopScript& script, QWidget* window) {
              EXPECT_EQ(script.TextOf(script.Child(window, IDC_INPUT_PROMPT)), "User name:");
              EXPECT_EQ(script.TextOf(script.Child(window, IDOK)), "OK");
              EXPECT_EQ(script.TextOf(script.Child(window, IDCANCEL)), "Cancel");
              script.Type(window, IDC_INPUT_EDIT, "Anna O");
              script.Click(window, IDOK);
            }),
            L"Anna O");
  EXPECT_EQ(Run([](DesktopScript& script, QWidget* window) { script.Click(window, IDOK); }), L"");
}

TEST_F(InputDialogTest, CancelAnswersNothingWhateverWasEntered) {
  EXPECT_EQ(Run([](DesktopScript& script, QWidget* window) {
              script.Type(window, IDC_INPUT_EDIT, "Anna");
              script.Click(window, IDCANCEL);
            }),
            std::nullopt);
}

TEST_F(InputDialogTest, MoreThan511CharactersCannotBeEntered) {
  const auto text = Run([](DesktopScript& script, QWidget* window) {
    script.Type(window, IDC_INPUT_EDIT, QString(520, 'a'));
    script.Click(window, IDOK);
  });
  ASSERT_TRUE(text.has_value());
  EXPECT_EQ(text->size(), 511u);
}

}  // namespace
}  // namespace quillgate
