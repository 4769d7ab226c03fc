#include "frame/input_dialog.h"

#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

TEST_F(FrameTest, AnInputDialogAnswersUpTo511CharactersOfWhatWasEnteredOrNothingAfterCancel) {
  const struct {
    QString typed;
    int button;
    std::optional<std::wstring> answer;
  } cases[] = {{"Anna O", IDOK, L"Anna O"},
               {"", IDOK, L""},
               {QString(520, 'a'), IDOK, std::wstring(511, L'a')},
               {"Anna", IDCANCEL, std::nullopt}};
  for (const auto& each : cases) {
    const auto enter = [&](DesktopScript& user, QWidget* window) {
      for (const auto& [id, shown] :
           {std::pair{IDC_INPUT_PROMPT, "User name:"}, {IDOK, "OK"}, {IDCANCEL, "Cancel"}})
        EXPECT_EQ(user.TextOf(window, id), shown);
      user.Type(window, IDC_INPUT_EDIT, each.typed);
    };
    DesktopScript script(UserOf("Add new user", each.button, enter));
    EXPECT_EQ(InputDialog(ui_, {}).Run(window_->Get(), kMsgAddNewUser, kMsgUserNameLabel),
              each.answer)
        << each.typed.toStdString();
  }
}

}  // namespace
}  // namespace quillgate
