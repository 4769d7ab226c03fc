#include "accounts/logon_session.h"

#include <future>

#include "program/program_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Return;

class MockPrompts : public LogonPrompts {
 public:
  MOCK_METHOD(std::optional<std::wstring>, AskLogon, (LogonSystem, const LogonCandidates&),
              (override));
  MOCK_METHOD(std::optional<std::wstring>, AskFirstUserName, (), (override));
  MOCK_METHOD(void, NotifyFirstUserMade, (), (override));
};

// Writes down whose session begins (+) and whose ends (-).
class LogonSessionTest : public ProgramTest, protected SessionControl {
 protected:
  LogonSessionTest() {
    logon_.SetSessionControl(this);
    logon_.SetPrompts(&mock_);
  }

  void Reevaluate() override { log_.push_back(L"+" + LoggedOn()); }
  void EndSession() override { log_.push_back(L"-" + LoggedOn()); }
  std::vector<std::wstring> TakeLog() { return std::exchange(log_, {}); }

  testing::StrictMock<MockPrompts> mock_;
  std::vector<std::wstring> log_;
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
  EXPECT_THAT(TakeLog(), ElementsAre(L"+User", L"-User", L"+User", L"-User", L"+Admin"));
}

TEST_F(LogonSessionTest, TheFirstUserIsAskedForUntilItHasANameAndIsAStoredAdministrator) {
  UseSystem(L"QUILLGATE", {});
  const testing::InSequence order;
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
  EXPECT_THAT(TakeLog(), ElementsAre(L"+Anna"));
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
  EXPECT_THAT(TakeLog(), ElementsAre(L"+Anna"));
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
  EXPECT_THAT(TakeLog(), ElementsAre(L"+Anna", L"-Anna", L"+Bo", L"-Bo"));
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
  EXPECT_THAT(TakeLog(), IsEmpty());
}

// A person before a dialog, who answers after what happens meanwhile on another thread.
class SlowPerson final : public LogonPrompts {
 public:
  using Answer = std::optional<std::wstring>;

  Answer AskLogon(LogonSystem, const LogonCandidates& candidates) override {
    const Answer name = Reply();
    // A dialog accepts whom it knows.
    return name && candidates.Accepts(*name, L"") ? name : std::nullopt;
  }
  Answer AskFirstUserName() override { return Reply(); }
  void NotifyFirstUserMade() override { ++usersNotified; }

  // Under the next dialog.
  std::function<void()> meanwhile;
  Answer answer;
  int usersNotified = 0;

 private:
  Answer Reply() {
    if (const auto work = std::exchange(meanwhile, {})) {
      done_ = std::async(std::launch::async, work);
      EXPECT_EQ(done_.wait_for(10s), std::future_status::ready) << "waits for the dialog";
    }
    return answer;
  }

  std::future<void> done_;
};

class OpenQuestionTest : public LogonSessionTest {
 protected:
  OpenQuestionTest() {
    logon_.SetPrompts(&person_);
    identity_.name = L"Anna";
  }

  // A logon whose question gets the answer after what happens meanwhile.
  bool LogOn(std::wstring_view name, std::function<void()> meanwhile, SlowPerson::Answer answer) {
    person_.meanwhile = std::move(meanwhile);
    person_.answer = std::move(answer);
    return logon_.LogOn(name);
  }

  SlowPerson person_;
};

TEST_F(OpenQuestionTest, OnlyAnAcceptedAnswerEndsTheSessionThatBeganMeanwhile) {
  const struct {
    bool logsOff;
    SlowPerson::Answer answer;
    const wchar_t* current;
    std::vector<std::wstring> log;
  } cases[] = {{true, L"Admin", L"Admin", {L"+User", L"-User", L"+Admin"}},
               {false, L"Admin", L"Admin", {L"+User", L"-User", L"+Admin"}},
               {false, {}, L"User", {L"+User"}}};
  UseSystem(L"NONE", {L"Admin", L"User"});
  for (const auto& each : cases) {
    const auto meanwhile = [&] {
      EXPECT_TRUE(logon_.LogOn(L"")) << "asks nothing, so waits for nobody";
      EXPECT_EQ(LoggedOn(), L"User");
      if (each.logsOff) logon_.LogOff(1);
      EXPECT_EQ(logon_.IsLoggedOn(), !each.logsOff);
    };
    EXPECT_TRUE(LogOn(L"Admin", meanwhile, each.answer));
    EXPECT_EQ(LoggedOn(), each.current);
    EXPECT_EQ(TakeLog(), each.log);
    logon_.LogOff(1);
    TakeLog();
  }
}

TEST_F(OpenQuestionTest, ASecondLogonThatWouldAskCountsAsCancelledUntilTheFirstHasItsAnswer) {
  UseSystem(L"QUILLGATE", {L"Anna"});
  const auto another = [this] { EXPECT_FALSE(logon_.LogOn(L"")); };
  EXPECT_FALSE(LogOn(L"", another, {}));
  EXPECT_TRUE(LogOn(L"", another, L"Anna"));
}

TEST_F(OpenQuestionTest, TheNameIsLookedUpAmongTheUsersOfTheAnswersTime) {
  const std::function<void()> changes[] = {[this] { UseSystem(L"QUILLGATE", {L"Bo"}); },
                                           [this] { UseSystem(L"WINDOWS", {L"Anna"}); },
                                           [this] { logon_.SetUsers(nullptr); }};
  for (const auto& change : changes) {
    UseSystem(L"QUILLGATE", {L"Anna"});
    EXPECT_FALSE(LogOn(L"", change, L"Anna"));
    EXPECT_THAT(TakeLog(), IsEmpty());
  }
  UseSystem(L"QUILLGATE", {L"Anna"});
  EXPECT_TRUE(LogOn(L"", changes[0], L"Bo"));
}

TEST_F(OpenQuestionTest, UsersThatCameMeanwhileArePreferredToAFirstOne) {
  UseSystem(L"QUILLGATE", {});
  EXPECT_FALSE(LogOn(
      L"", [this] { UseSystem(L"QUILLGATE", {L"Anna"}); }, L"Intruder"));
  EXPECT_THAT(users_->SortedNames(), ElementsAre(L"Anna"));
  EXPECT_EQ(person_.usersNotified, 0);
}

TEST_F(OpenQuestionTest, WhoMustBeAskedIsKnownBeforehandAndAnswersNothingWhereNobodyCan) {
  const std::tuple<const wchar_t*, const wchar_t*, bool> cases[] = {
      {L"NONE", L"", false},        {L"NONE", L"User", false},     {L"NONE", L"Admin", true},
      {L"WINDOWS", L"", false},     {L"WINDOWS", L"Admin", false}, {L"QUILLGATE", L"", true},
      {L"QUILLGATE", L"User", true}};
  for (const auto& [system, name, asks] : cases) {
    settings_.SetSetting(SettingKey::kLogonSystem, system);
    EXPECT_EQ(logon_.LogOnWithoutAsking(name), !asks) << system << name;
  }
  logon_.SetPrompts(nullptr);
  UseSystem(L"NONE", {L"Admin", L"User"});
  EXPECT_TRUE(logon_.LogOn(L"Admin"));
  EXPECT_EQ(LoggedOn(), L"User");
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
