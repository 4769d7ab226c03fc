// The questions of a logon on the screen, from the first user to the override.
#include "ui/dialog_prompts.h"

#include "frame/desktop/frame_test.h"
#include "program/program_test.h"
#include "program/recording_indicator.h"

namespace quillgate {
namespace {

class DialogPromptsTest : public WithUsers<FrameTest> {
 protected:
  DialogPromptsTest() { logon_.SetPrompts(&dialogs_); }

  bool LogOn(std::wstring_view name, std::function<void(DesktopScript&)> user) {
    DesktopScript script(std::move(user));
    return logon_.LogOn(name);
  }
  // The logon dialog with the tray locked.
  QWidget* AwaitLogon(DesktopScript& script) {
    QWidget* window = script.AwaitWindow("Quillgate - Log on");
    EXPECT_TRUE(indicator_.locked);
    return window;
  }

  RecordingIndicator indicator_;
  GdiPlus gdiPlus_;
  DialogPrompts dialogs_{ui_, settings_, gdiPlus_, indicator_};
};

TEST_F(DialogPromptsTest, TheFirstUserIsMadeThenLogsOnWithABlankPassword) {
  UseSystem(L"QUILLGATE", {});
  EXPECT_TRUE(LogOn(L"", [this](DesktopScript& script) {
    QWidget* empty = script.AwaitWindow("Add new user");
    const HWND handle = script.HandleOf(empty);
    script.Click(empty, IDOK);
    script.Await([handle] { return !::IsWindow(handle); }, "end of the empty answer");
    QWidget* again = script.AwaitWindow("Add new user");
    EXPECT_TRUE(indicator_.locked);
    EXPECT_EQ(script.TextOf(again, IDC_INPUT_PROMPT),
              "No Quillgate users were found. Please enter a name to create a new user:");
    script.Type(again, IDC_INPUT_EDIT, "O'Brien");
    script.Key(Qt::Key_Return);
    EXPECT_EQ(CloseBox(script), "Invalid user name.");
    script.Type(script.AwaitWindow("Add new user"), IDC_INPUT_EDIT, "Anna");
    script.Key(Qt::Key_Return);
    EXPECT_EQ(CloseBox(script).remove('\r').toStdString(),
              "A new user with administrator rights for Quillgate has been created. \n\n"
              "The password for this new user is currently blank.");
    script.Click(AwaitLogon(script), IDOK);
  }));
  EXPECT_EQ(LoggedOn(), L"Anna");
  EXPECT_TRUE(logon_.CurrentUser()->IsAdministrator());
  EXPECT_FALSE(indicator_.locked);
}

TEST_F(DialogPromptsTest, TheOverrideIsGivenForItsPasswordOnlyAndThePauseOutlivesTheDialog) {
  UseSystem(L"NONE", {L"User"});
  User admin = Administrator(L"Admin");
  admin.SetPassword(L"secret");
  users_->Add(admin);
  LogOn(L"Admin", [this](DesktopScript& script) { script.Click(AwaitLogon(script), IDCANCEL); });
  EXPECT_EQ(LoggedOn(), L"User");
  LogOn(L"Admin", [this](DesktopScript& script) {
    QWidget* window = AwaitLogon(script);
    script.Click(window, IDOK);
    CloseBox(script);
    script.Click(window, IDCANCEL);
  });
  EXPECT_EQ(LoggedOn(), L"User");
  LogOn(L"Admin", [this](DesktopScript& script) {
    QWidget* window = AwaitLogon(script);
    EndPause(script, window);
    script.Type(window, IDC_LOGON_PASSWORD, "secret");
    script.Click(window, IDOK);
  });
  EXPECT_EQ(LoggedOn(), L"Admin");
  EXPECT_FALSE(indicator_.locked);
}

TEST_F(DialogPromptsTest, AStopEndsTheDialogAndWhateverWouldFollowIt) {
  UseSystem(L"QUILLGATE", {});
  // Lives to the end: it would look at the messages when it goes.
  DesktopScript script([this](DesktopScript& steps) {
    steps.AwaitWindow("Add new user");
    steps.Do([this] {
      stop_.Raise();
      ::PostQuitMessage(0);
    });
  });
  EXPECT_FALSE(logon_.LogOn(L""));
  MSG message{};
  while (message.message != WM_QUIT && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
  }
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT)) << "left for the message loop";
  users_->Add(User(L"Anna"));
  EXPECT_FALSE(logon_.LogOn(L"")) << "no dialog opens any more";
}

}  // namespace
}  // namespace quillgate
