// The questions of a logon on the screen, from the first user to the override.
#include "ui/dialog_prompts.h"

#include "accounts/no_identity.h"
#include "frame/desktop/frame_test.h"

namespace quillgate {
namespace {

class MockIndicator : public GateIndicator {
 public:
  MOCK_METHOD(void, SetIcon, (GateIcon), (override));
  MOCK_METHOD(void, SetTip, (const std::wstring&), (override));
  MOCK_METHOD(void, Show, (), (override));
  MOCK_METHOD(void, ShowMessage, (const std::wstring&, const std::wstring&, BalloonIcon, int),
              (override));
  MOCK_METHOD(bool, Lock, (), (override));
  MOCK_METHOD(void, Unlock, (), (override));
};

class DialogPromptsTest : public FrameTest {
 protected:
  DialogPromptsTest() {
    ON_CALL(indicator_, Lock).WillByDefault([this] { return locked_.exchange(true); });
    ON_CALL(indicator_, Unlock).WillByDefault([this] { locked_ = false; });
    session_.SetPrompts(&prompts_);
  }

  void Choose(LogonSystem system, const wchar_t* word) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    users_ = std::make_shared<UserCollection>(system, database_);
    session_.SetUsers(users_);
  }
  void AddUser(const wchar_t* name, const wchar_t* password) {
    User user(name);
    user.SetPassword(password);
    users_->Add(std::move(user));
  }

  bool LogOn(std::wstring_view name, std::function<void(DesktopScript&)> user) {
    DesktopScript script(std::move(user));
    return session_.LogOn(name);
  }
  std::wstring LoggedOn() const {
    const auto user = session_.CurrentUser();
    return user == nullptr ? L"(nobody)" : user->Name();
  }
  // The logon dialog with the tray locked.
  QWidget* AwaitLogon(DesktopScript& script) {
    QWidget* window = script.AwaitWindow("Quillgate - Log on");
    EXPECT_TRUE(locked_);
    return window;
  }

  testing::NiceMock<MockIndicator> indicator_;
  std::atomic<bool> locked_ = false;
  GdiPlus gdiPlus_;
  DialogPrompts prompts_{ui_, settings_, gdiPlus_, indicator_};
  NoIdentity identity_;
  LogonSession session_{settings_, identity_};
  std::shared_ptr<UserCollection> users_;
};

TEST_F(DialogPromptsTest, TheFirstUserIsMadeThenLogsOnWithABlankPassword) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE");
  EXPECT_TRUE(LogOn(L"", [this](DesktopScript& script) {
    QWidget* empty = script.AwaitWindow("Add new user");
    const HWND handle = script.HandleOf(empty);
    script.Click(empty, IDOK);
    script.Await([handle] { return !::IsWindow(handle); }, "end of the empty answer");
    QWidget* again = script.AwaitWindow("Add new user");
    EXPECT_TRUE(locked_);
    EXPECT_EQ(script.TextOf(script.Child(again, IDC_INPUT_PROMPT)),
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
  EXPECT_TRUE(session_.CurrentUser()->IsAdministrator());
  EXPECT_FALSE(locked_);
}

TEST_F(DialogPromptsTest, TheOverrideIsGivenForItsPasswordOnly) {
  Choose(LogonSystem::kNone, L"NONE");
  AddUser(L"User", L"");
  AddUser(L"Admin", L"secret");
  LogOn(L"Admin", [this](DesktopScript& script) { script.Click(AwaitLogon(script), IDCANCEL); });
  EXPECT_EQ(LoggedOn(), L"User");
  LogOn(L"Admin", [this](DesktopScript& script) {
    QWidget* window = AwaitLogon(script);
    for (int attempt = 0; attempt < 3; ++attempt) {
      script.Click(window, IDOK);
      CloseBox(script);
      if (attempt < 2) EndPause(script, window);
    }
  });
  EXPECT_EQ(LoggedOn(), L"User");
  LogOn(L"Admin", [this](DesktopScript& script) {
    QWidget* window = AwaitLogon(script);
    EndPause(script, window);
    script.Type(window, IDC_LOGON_PASSWORD, "secret");
    script.Click(window, IDOK);
  });
  EXPECT_EQ(LoggedOn(), L"Admin");
  EXPECT_FALSE(locked_);
}

TEST_F(DialogPromptsTest, UsersReloadedUnderTheDialogCountAtOnce) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE");
  AddUser(L"Anna", L"old");
  EXPECT_TRUE(LogOn(L"", [this](DesktopScript& script) {
    QWidget* window = AwaitLogon(script);
    script.Do([this] {
      Choose(LogonSystem::kQuillgate, L"QUILLGATE");
      AddUser(L"Anna", L"new");
    });
    script.Type(window, IDC_LOGON_PASSWORD, "new");
    script.Click(window, IDOK);
  }));
  EXPECT_EQ(session_.CurrentUser(), users_->Find(L"Anna"));
}

TEST_F(DialogPromptsTest, AStopEndsTheDialogAndWhateverWouldFollowIt) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE");
  DesktopScript script([this](DesktopScript& steps) {
    steps.AwaitWindow("Add new user");
    steps.Do([this] {
      stop_.Raise();
      ::PostQuitMessage(0);
    });
  });
  EXPECT_FALSE(session_.LogOn(L""));
  MSG message{};
  while (message.message != WM_QUIT && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
  }
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT)) << "left for the message loop";
  AddUser(L"Anna", L"");
  EXPECT_FALSE(session_.LogOn(L"")) << "no dialog opens any more";
}

}  // namespace
}  // namespace quillgate
