#include "accounts/logon_session.h"

#include <gmock/gmock.h>

#include "accounts_test.h"

namespace quillgate {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::InSequence;
using testing::Return;
using testing::StrictMock;
using testing::Throw;

class MockPrompts : public LogonPrompts {
 public:
  MOCK_METHOD(std::optional<std::wstring>, AskLogon, (LogonSystem, const LogonCandidates&),
              (override));
  MOCK_METHOD(std::optional<std::wstring>, AskFirstUserName, (), (override));
  MOCK_METHOD(void, TellFirstUserMade, (), (override));
};

class MockControl : public SessionControl {
 public:
  MOCK_METHOD(void, Reevaluate, (), (override));
  MOCK_METHOD(void, EndSession, (), (override));
};

class FakeIdentity : public WindowsIdentity {
 public:
  std::wstring UserName() override { return name; }
  std::wstring name;
};

class LogonSessionTest : public AccountsTest {
 protected:
  LogonSessionTest() {
    session_.SetPrompts(&prompts_);
    session_.SetSessionControl(&control_);
  }

  void Choose(LogonSystem system, std::wstring_view word,
              const std::vector<std::wstring>& names = {}) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    users_ = std::make_shared<UserCollection>(system, database_);
    for (const std::wstring& name : names)
      users_->Add(MakeUser(name));
    session_.SetUsers(users_);
  }

  std::wstring CurrentName() const {
    const auto user = session_.CurrentUser();
    return user == nullptr ? L"(nobody)" : user->Name();
  }

  StrictMock<MockPrompts> prompts_;
  StrictMock<MockControl> control_;
  FakeIdentity identity_;
  LogonSession session_{settings_, identity_};
  std::shared_ptr<UserCollection> users_;
};

TEST_F(LogonSessionTest, AnOrdinaryLogonUnderNoneAsksNothingAndTakesTheCommonUser) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  EXPECT_CALL(control_, Reevaluate()).WillOnce([this] { EXPECT_EQ(CurrentName(), L"User"); });
  EXPECT_TRUE(session_.LogOn(L""));
  EXPECT_EQ(CurrentName(), L"User");
}

TEST_F(LogonSessionTest, TheOverrideNeedsItsPasswordAndFallsBackToTheCommonUser) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  EXPECT_CALL(control_, Reevaluate()).Times(2);
  EXPECT_CALL(control_, EndSession());
  EXPECT_CALL(prompts_, AskLogon(LogonSystem::kNone, _))
      .WillOnce(Return(std::nullopt))
      .WillOnce(Return(L"Admin"));
  EXPECT_TRUE(session_.LogOn(L"Admin"));
  EXPECT_EQ(CurrentName(), L"User");
  EXPECT_TRUE(session_.LogOn(L"Admin"));
  EXPECT_EQ(CurrentName(), L"Admin");
}

TEST_F(LogonSessionTest, NobodyIsLoggedOnWhenTheUserLookedForIsMissing) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin"});
  EXPECT_FALSE(session_.LogOn(L"User"));
  EXPECT_EQ(CurrentName(), L"(nobody)");
}

TEST_F(LogonSessionTest, TheFirstUserIsAskedForUntilItHasANameAndIsAStoredAdministrator) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE");
  const InSequence order;
  EXPECT_CALL(prompts_, AskFirstUserName())
      .Times(3)
      .WillOnce(Return(L""))
      .WillOnce(Return(L""))
      .WillOnce(Return(L"Anna"));
  EXPECT_CALL(prompts_, TellFirstUserMade());
  EXPECT_CALL(prompts_, AskLogon(LogonSystem::kQuillgate, _))
      .WillOnce([](LogonSystem, const LogonCandidates& users) -> std::optional<std::wstring> {
        EXPECT_THAT(users.Names(), ElementsAre(L"Anna"));
        EXPECT_TRUE(users.Accepts(L"Anna", L""));
        EXPECT_FALSE(users.Accepts(L"Anna", L"other"));
        EXPECT_FALSE(users.Accepts(L"Bo", L""));
        return L"Anna";
      });
  EXPECT_CALL(control_, Reevaluate());
  EXPECT_TRUE(session_.LogOn(L""));
  EXPECT_EQ(CurrentName(), L"Anna");
  EXPECT_EQ(Query(L"SELECT Name, Privileges FROM Users_Quillgate;"), (DbRows{{L"Anna", L"1"}}));
}

TEST_F(LogonSessionTest, AFirstUserThatCannotBeStoredIsNotMade) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE");
  database_.DbExecute(L"DROP TABLE Users_Quillgate;");
  EXPECT_CALL(prompts_, AskFirstUserName()).WillOnce(Return(L"Anna"));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_EQ(users_->Count(), 0u);
}

TEST_F(LogonSessionTest, CancellingTheFirstUserEndsTheLogonBeforeItsDialog) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE");
  EXPECT_CALL(prompts_, AskFirstUserName()).WillOnce(Return(std::nullopt));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_EQ(users_->Count(), 0u);
}

TEST_F(LogonSessionTest, UnderQuillgateOnlyAnAcceptedUserOfTheListIsLoggedOn) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  EXPECT_CALL(prompts_, AskLogon(LogonSystem::kQuillgate, _))
      .WillOnce(Return(std::nullopt))
      .WillOnce(Return(L"Bo"))
      .WillOnce(Return(L"Anna"));
  EXPECT_CALL(control_, Reevaluate()).Times(1);
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_TRUE(session_.LogOn(L""));
}

TEST_F(LogonSessionTest, UnderWindowsTheIdentityDecidesAloneAndLogonsFollowIt) {
  Choose(LogonSystem::kWindows, L"WINDOWS", {L"Anna", L"Bo"});
  EXPECT_CALL(control_, Reevaluate()).Times(2);
  EXPECT_CALL(control_, EndSession()).Times(2);
  const struct {
    const wchar_t* windowsName;
    const wchar_t* current;
  } cases[] = {{L"", L"(nobody)"}, {L"Anna", L"Anna"}, {L"Bo", L"Bo"}, {L"bo", L"(nobody)"}};
  for (const auto& each : cases) {
    identity_.name = each.windowsName;
    session_.LogOn(L"");
    EXPECT_EQ(CurrentName(), each.current);
  }
}

TEST_F(LogonSessionTest, LoggingOnAgainEndsTheFormerUsersSessionFirst) {
  Choose(LogonSystem::kWindows, L"WINDOWS", {L"Anna", L"Bo"});
  const InSequence order;
  EXPECT_CALL(control_, Reevaluate());
  EXPECT_CALL(control_, EndSession()).WillOnce([this] { EXPECT_EQ(CurrentName(), L"Anna"); });
  EXPECT_CALL(control_, Reevaluate()).WillOnce([this] { EXPECT_EQ(CurrentName(), L"Bo"); });
  identity_.name = L"Anna";
  EXPECT_TRUE(session_.LogOn(L""));
  identity_.name = L"Bo";
  EXPECT_TRUE(session_.LogOn(L""));
}

TEST_F(LogonSessionTest, NobodyStaysLoggedOnWhenTheSessionsEndFails) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  EXPECT_CALL(control_, Reevaluate());
  session_.LogOn(L"");
  EXPECT_CALL(control_, EndSession()).WillOnce(Throw(DBerror(L"disk full", 13)));
  EXPECT_THROW(session_.LogOff(1), DBerror);
  EXPECT_FALSE(session_.IsLoggedOn());
}

TEST_F(LogonSessionTest, RefreshingFollowsTheNameIntoTheReloadedList) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  ASSERT_TRUE(users_->SaveAll());
  EXPECT_CALL(control_, Reevaluate());
  session_.LogOn(L"");
  const auto before = session_.CurrentUser();
  ASSERT_TRUE(users_->LoadAll());
  session_.RefreshCurrentUser();
  EXPECT_EQ(session_.CurrentUser(), users_->Find(L"User"));
  EXPECT_NE(session_.CurrentUser(), before);
  ASSERT_TRUE(users_->Rename(L"User", L"Other"));
  session_.RefreshCurrentUser();
  EXPECT_EQ(CurrentName(), L"Other");
  database_.DbExecute(L"DELETE FROM Users_None;");
  users_->LoadAll();
  session_.RefreshCurrentUser();
  EXPECT_FALSE(session_.IsLoggedOn());
}

TEST_F(LogonSessionTest, WithoutUsersNobodyIsAskedOrLoggedOn) {
  settings_.SetSetting(SettingKey::kLogonSystem, L"QUILLGATE");
  EXPECT_FALSE(session_.LogOn(L""));
  session_.RefreshCurrentUser();
  EXPECT_FALSE(session_.IsLoggedOn());
}

TEST(LogonSystem, EveryWordButTwoIsTheNoneSystem) {
  const struct {
    const wchar_t* word;
    const wchar_t* table;
  } cases[] = {{L"QUILLGATE", L"Users_Quillgate"}, {L"WINDOWS", L"Users_Windows"},
               {L"NONE", L"Users_None"},           {L"", L"Users_None"},
               {L"windows", L"Users_None"},        {L"WINDOWS ", L"Users_None"}};
  for (const auto& each : cases)
    EXPECT_EQ(UserTableOf(LogonSystemOf(each.word)), each.table) << each.word;
}

}  // namespace
}  // namespace quillgate
