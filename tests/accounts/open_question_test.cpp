// What happens while a logon asks a person, who takes as long as they like.
#include <functional>
#include <future>

#include "accounts_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

// A person before a dialog, who answers after what happens meanwhile on another thread.
class SlowPerson final : public LogonPrompts {
 public:
  using Answer = std::optional<std::wstring>;

  Answer AskLogon(LogonSystem, const LogonCandidates& candidates) override {
    Wait();
    // A dialog accepts whom it knows.
    return answer && candidates.Accepts(*answer, L"") ? answer : std::nullopt;
  }
  Answer AskFirstUserName() override {
    Wait();
    return answer;
  }
  void NotifyFirstUserMade() override { ++usersNotified; }

  // Under the next dialog.
  std::function<void()> meanwhile;
  Answer answer;
  int usersNotified = 0;

 private:
  void Wait() {
    if (const auto work = std::exchange(meanwhile, {})) {
      done_ = std::async(std::launch::async, work);
      EXPECT_EQ(done_.wait_for(10s), std::future_status::ready) << "waits for the dialog";
    }
  }

  std::future<void> done_;
};

class OpenQuestionTest : public LogonTest {
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
    EXPECT_EQ(control_.TakeLog(), each.log);
    logon_.LogOff(1);
    control_.TakeLog();
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
    EXPECT_THAT(control_.TakeLog(), IsEmpty());
  }
  UseSystem(L"QUILLGATE", {L"Anna"});
  EXPECT_TRUE(LogOn(L"", changes[0], L"Bo"));
}

TEST_F(OpenQuestionTest, UsersThatCameMeanwhileArePreferredToAFirstOne) {
  UseSystem(L"QUILLGATE", {});
  EXPECT_FALSE(LogOn(
      L"", [this] { UseSystem(L"QUILLGATE", {L"Anna"}); }, L"Intruder"));
  EXPECT_THAT(users_->SortedNames(), testing::ElementsAre(L"Anna"));
  EXPECT_EQ(person_.usersNotified, 0);
}

TEST_F(OpenQuestionTest, WhoMustBeAskedIsKnownBeforehandAndAnswersNothingWhereNobodyCan) {
  const struct {
    const wchar_t* system;
    const wchar_t* name;
    bool asks;
  } cases[] = {{L"NONE", L"", false},         {L"NONE", L"User", false},
               {L"NONE", L"Admin", true},     {L"WINDOWS", L"", false},
               {L"WINDOWS", L"Admin", false}, {L"QUILLGATE", L"", true},
               {L"QUILLGATE", L"User", true}};
  for (const auto& each : cases) {
    settings_.SetSetting(SettingKey::kLogonSystem, each.system);
    EXPECT_EQ(logon_.LogOnWithoutAsking(each.name), !each.asks) << each.system << each.name;
  }
  logon_.SetPrompts(nullptr);
  UseSystem(L"NONE", {L"Admin", L"User"});
  EXPECT_TRUE(logon_.LogOn(L"Admin"));
  EXPECT_EQ(LoggedOn(), L"User");
}

}  // namespace
}  // namespace quillgate
