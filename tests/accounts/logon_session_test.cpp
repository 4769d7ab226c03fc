#include "accounts/logon_session.h"

#include <gmock/gmock.h>

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
  MOCK_METHOD(void, TellFirstUserMade, (), (override));
};

class LogonSessionTest : public LogonTest {
 protected:
  LogonSessionTest() { session_.SetPrompts(&prompts_); }

  StrictMock<MockPrompts> prompts_;
};

TEST_F(LogonSessionTest, UnderNoneOnlyTheOverrideAsksAndItFallsBackToTheCommonUser) {
  Choose(L"NONE", {L"Admin", L"User"});
  EXPECT_TRUE(session_.LogOn(L""));
  EXPECT_EQ(CurrentName(), L"User");
  EXPECT_CALL(prompts_, AskLogon(LogonSystem::kNone, _))
      .WillOnce(Return(std::nullopt))
      .WillOnce(Return(L"Admin"));
  EXPECT_TRUE(session_.LogOn(L"Admin"));
  EXPECT_EQ(CurrentName(), L"User");
  EXPECT_TRUE(session_.LogOn(L"Admin"));
  EXPECT_EQ(CurrentName(), L"Admin");
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+User", L"-User", L"+User", L"-User", L"+Admin"));
}

TEST_F(LogonSessionTest, NobodyIsLoggedOnWhenTheUserLookedForIsMissing) {
  Choose(L"NONE", {L"Admin"});
  EXPECT_FALSE(session_.LogOn(L"User"));
  EXPECT_EQ(CurrentName(), L"(nobody)");
  EXPECT_THAT(control_.TakeLog(), IsEmpty());
}

TEST_F(LogonSessionTest, TheFirstUserIsAskedForUntilItHasANameAndIsAStoredAdministrator) {
  Choose(L"QUILLGATE", {});
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
  EXPECT_TRUE(session_.LogOn(L""));
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+Anna"));
  EXPECT_EQ(Query(L"SELECT Name, Privileges FROM Users_Quillgate;"), (DbRows{{L"Anna", L"1"}}));
}

TEST_F(LogonSessionTest, AFirstUserThatCannotBeStoredIsNotMade) {
  Choose(L"QUILLGATE", {});
  database_.DbExecute(L"DROP TABLE Users_Quillgate;");
  EXPECT_CALL(prompts_, AskFirstUserName()).WillOnce(Return(L"Anna"));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_EQ(users_->Count(), 0u);
}

TEST_F(LogonSessionTest, CancellingTheFirstUserEndsTheLogonBeforeItsDialog) {
  Choose(L"QUILLGATE", {});
  EXPECT_CALL(prompts_, AskFirstUserName()).WillOnce(Return(std::nullopt));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_EQ(users_->Count(), 0u);
}

TEST_F(LogonSessionTest, UnderQuillgateOnlyAnAcceptedUserOfTheListIsLoggedOn) {
  Choose(L"QUILLGATE", {L"Anna"});
  EXPECT_CALL(prompts_, AskLogon(LogonSystem::kQuillgate, _))
      .WillOnce(Return(std::nullopt))
      .WillOnce(Return(L"Bo"))
      .WillOnce(Return(L"Anna"));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_TRUE(session_.LogOn(L""));
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+Anna"));
}

TEST_F(LogonSessionTest, UnderWindowsTheIdentityDecidesAloneAndEachLogonEndsTheSessionBefore) {
  Choose(L"WINDOWS", {L"Anna", L"Bo"});
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"", L"(nobody)"}, {L"Anna", L"Anna"}, {L"Bo", L"Bo"}, {L"bo", L"(nobody)"}};
  for (const auto& [windowsName, current] : cases) {
    identity_.name = windowsName;
    const bool isLoggedOn = session_.LogOn(L"");
    EXPECT_EQ(CurrentName(), current);
    EXPECT_EQ(isLoggedOn, session_.IsLoggedOn());
  }
  EXPECT_THAT(control_.TakeLog(), ElementsAre(L"+Anna", L"-Anna", L"+Bo", L"-Bo"));
}

TEST_F(LogonSessionTest, NobodyStaysLoggedOnWhenTheSessionsEndFails) {
  Choose(L"NONE", {L"Admin", L"User"});
  session_.LogOn(L"");
  control_.fails = true;
  EXPECT_THROW(session_.LogOff(1), DBerror);
  EXPECT_FALSE(session_.IsLoggedOn());
}

TEST_F(LogonSessionTest, RefreshingFollowsTheNameIntoTheReloadedList) {
  Choose(L"NONE", {L"Admin", L"User"});
  ASSERT_TRUE(users_->SaveAll());
  session_.LogOn(L"");
  const auto before = session_.CurrentUser();
  ASSERT_TRUE(users_->LoadAll());
  session_.RefreshCurrentUser();
  EXPECT_EQ(session_.CurrentUser(), users_->Find(L"User"));
  EXPECT_NE(session_.CurrentUser(), before);
  ASSERT_TRUE(users_->SetAdministrator(L"User", true));
  ASSERT_TRUE(users_->Rename(L"User", L"Other"));
  EXPECT_TRUE(session_.CurrentUser()->IsAdministrator()) << "without a refresh";
  EXPECT_EQ(CurrentName(), L"Other");
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
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"QUILLGATE", L"Users_Quillgate"}, {L"WINDOWS", L"Users_Windows"},
      {L"NONE", L"Users_None"},           {L"", L"Users_None"},
      {L"windows", L"Users_None"},        {L"WINDOWS ", L"Users_None"}};
  for (const auto& [word, table] : cases)
    EXPECT_EQ(UserTableOf(LogonSystemOf(word)), table) << word;
}

}  // namespace
}  // namespace quillgate
