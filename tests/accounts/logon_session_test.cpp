#include "accounts/logon_session.h"

#include "accounts_test.h"

namespace quillgate {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::InSequence;
using testing::IsEmpty;
using testing::Return;
using testing::StrictMock;

class MockPrompts : public LogonPrompts {
 public:
  MOCK_METHOD(std::optional<std::wstring>, AskLogon, (LogonSystem, const LogonCandidates&),
              (override));
  MOCK_METHOD(std::optional<std::wstring>, AskFirstUserName, (), (override));
  MOCK_METHOD(void, NotifyFirstUserMade, (), (override));
};

class LogonSessionTest : public LogonTest {
 protected:
  LogonSessionTest() { logon_.SetPrompts(&mock_); }

  StrictMock<MockPrompts> mock_;
};

TEST_F(LogonSessionTest, UnderNoneOnlyTheOverrideAsksAndItFallsBackToTheCommonUser) {
  UseSystem(L"NONE", {L"Admin", L"User"});
  EXPECT_TRUE(logon_.LogOn(L""));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_CALL(mock_, AskLogon(LogonSystem::kNone, _))
      .WillOnce(Return(std::nullopt))
      .WillOnce(Return(L"Admin"));
  EXPECT_TRUE(logon_.LogOn(L"Admin"));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_TRUE(logon_.LogOn(L"Admin"));
  EXPECT_EQ(LoggedOn(), L"Admin");
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+User", L"-User", L"+User", L"-User", L"+Admin"));
}

TEST_F(LogonSessionTest, TheFirstUserIsAskedForUntilItHasANameAndIsAStoredAdministrator) {
  UseSystem(L"QUILLGATE", {});
  const InSequence order;
  EXPECT_CALL(mock_, AskFirstUserName())
      .WillOnce(Return(L""))
      .WillOnce(Return(L""))
      .WillOnce(Return(L"Anna"));
  EXPECT_CALL(mock_, NotifyFirstUserMade());
  EXPECT_CALL(mock_, AskLogon(LogonSystem::kQuillgate, _))
      .WillOnce([](LogonSystem, const LogonCandidates& users) -> std::optional<std::wstring> {
        EXPECT_THAT(users.Names(), ElementsAre(L"Anna"));
        EXPECT_TRUE(users.Accepts(L"Anna", L""));
        EXPECT_FALSE(users.Accepts(L"Anna", L"other"));
        EXPECT_FALSE(users.Accepts(L"Bo", L""));
        return L"Anna";
      });
  EXPECT_TRUE(logon_.LogOn(L""));
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+Anna"));
  EXPECT_EQ(Query(L"SELECT Name, Privileges FROM Users_Quillgate;"), (DbRows{{L"Anna", L"1"}}));
}

TEST_F(LogonSessionTest, AFirstUserThatIsCancelledOrCannotBeStoredEndsTheLogonBeforeItsDialog) {
  UseSystem(L"QUILLGATE", {});
  database_.DbExecute(L"DROP TABLE Users_Quillgate;");
  EXPECT_CALL(mock_, AskFirstUserName()).WillOnce(Return(std::nullopt)).WillOnce(Return(L"Anna"));
  EXPECT_FALSE(logon_.LogOn(L""));
  EXPECT_FALSE(logon_.LogOn(L""));
  EXPECT_EQ(users_->Count(), 0u);
}

TEST_F(LogonSessionTest, UnderQuillgateOnlyAnAcceptedUserOfTheListIsLoggedOn) {
  UseSystem(L"QUILLGATE", {L"Anna"});
  EXPECT_CALL(mock_, AskLogon(LogonSystem::kQuillgate, _))
      .WillOnce(Return(std::nullopt))
      .WillOnce(Return(L"Bo"))
      .WillOnce(Return(L"Anna"));
  EXPECT_FALSE(logon_.LogOn(L""));
  EXPECT_FALSE(logon_.LogOn(L""));
  EXPECT_TRUE(logon_.LogOn(L""));
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+Anna"));
}

TEST_F(LogonSessionTest, UnderWindowsTheIdentityDecidesAloneAndEachLogonEndsTheSessionBefore) {
  UseSystem(L"WINDOWS", {L"Anna", L"Bo"});
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"(nobody)"}, {L"Anna", L"Anna"}, {L"Bo", L"Bo"}, {L"bo", L"(nobody)"}};
  for (const auto& [windowsName, current] : cases) {
    identity_.name = windowsName;
    const bool isLoggedOn = logon_.LogOn(L"");
    EXPECT_EQ(LoggedOn(), current);
    EXPECT_EQ(isLoggedOn, logon_.IsLoggedOn());
  }
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+Anna", L"-Anna", L"+Bo", L"-Bo"));
}

TEST_F(LogonSessionTest, RefreshingFollowsTheNameIntoTheReloadedList) {
  UseSystem(L"NONE", {L"Admin", L"User"});
  ASSERT_TRUE(users_->SaveAll());
  logon_.LogOn(L"");
  const auto before = logon_.CurrentUser();
  ASSERT_TRUE(users_->LoadAll());
  logon_.RefreshCurrentUser();
  EXPECT_EQ(logon_.CurrentUser(), users_->Find(L"User"));
  EXPECT_NE(logon_.CurrentUser(), before);
  ASSERT_TRUE(users_->SetAdministrator(L"User", true));
  ASSERT_TRUE(users_->Rename(L"User", L"Other"));
  EXPECT_TRUE(logon_.CurrentUser()->IsAdministrator()) << "without a refresh";
  EXPECT_EQ(LoggedOn(), L"Other");
  logon_.RefreshCurrentUser();
  EXPECT_EQ(LoggedOn(), L"Other");
  database_.DbExecute(L"DELETE FROM Users_None;");
  users_->LoadAll();
  logon_.RefreshCurrentUser();
  EXPECT_EQ(LoggedOn(), L"(nobody)");
}

TEST_F(LogonSessionTest, WithoutTheUserLookedForNobodyIsAskedOrLoggedOn) {
  settings_.SetSetting(SettingKey::kLogonSystem, L"QUILLGATE");
  EXPECT_FALSE(logon_.LogOn(L""));
  logon_.RefreshCurrentUser();
  UseSystem(L"NONE", {L"Admin"});
  EXPECT_FALSE(logon_.LogOn(L"User"));
  EXPECT_EQ(LoggedOn(), L"(nobody)");
  EXPECT_THAT(control_.TakeLog(), IsEmpty());
}

TEST(LogonSystem, EveryWordButTwoIsTheNoneSystem) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"QUILLGATE", L"Users_Quillgate"}, {L"WINDOWS", L"Users_Windows"},
      {L"NONE", L"Users_None"},           {L"", L"Users_None"},
      {L"windows", L"Users_None"},        {L"WINDOWS ", L"Users_None"}};
  for (const auto& [word, table] : cases)
    EXPECT_EQ(UserTableOf(LogonSystemOf(word)), table) << word;
}

}  // namespace
}  // namespace quillgate
