// What happens while a logon asks a person, who takes as long as they like.
#include <gmock/gmock.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "accounts_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

constexpr auto kPatience = 10s;

// A person before a dialog: the dialog is open until the test gives the answer.
class SlowPerson final : public LogonPrompts {
 public:
  using Answer = std::optional<std::wstring>;

  Answer AskLogon(LogonSystem, const LogonCandidates& candidates) override {
    const Answer answer = Wait(Question::kLogon);
    // A dialog accepts whom it knows.
    return answer && candidates.Accepts(*answer, L"") ? answer : std::nullopt;
  }
  Answer AskFirstUserName() override { return Wait(Question::kFirstUser); }
  void TellFirstUserMade() override { ++usersTold; }

  enum class Question { kNone, kFirstUser, kLogon };

  bool AwaitQuestion(Question question) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kPatience, [&] { return open_ == question; });
  }
  void Give(Answer answer) {
    const std::lock_guard lock(mutex_);
    answer_.emplace(std::move(answer));
    open_ = Question::kNone;
    changed_.notify_all();
  }

  std::atomic<int> usersTold = 0;

 private:
  Answer Wait(Question question) {
    std::unique_lock lock(mutex_);
    EXPECT_EQ(open_, Question::kNone) << "a dialog upon a dialog";
    open_ = question;
    changed_.notify_all();
    if (!changed_.wait_for(lock, kPatience, [&] { return answer_.has_value(); })) return {};
    return *std::exchange(answer_, std::nullopt);
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  Question open_ = Question::kNone;
  std::optional<Answer> answer_;
};

using Question = SlowPerson::Question;

class OpenQuestionTest : public LogonTest {
 protected:
  OpenQuestionTest() {
    session_.SetPrompts(&person_);
    identity_.name = L"Anna";
  }
  ~OpenQuestionTest() override {
    if (dialog_.joinable()) dialog_.join();
  }

  // A logon that asks, on a thread of its own, as far as its question.
  void Open(std::wstring_view name, Question question = Question::kLogon) {
    dialog_ = std::thread([this, name] { result_ = session_.LogOn(name); });
    ASSERT_TRUE(person_.AwaitQuestion(question));
  }
  bool Close(SlowPerson::Answer answer) {
    person_.Give(std::move(answer));
    dialog_.join();
    return result_;
  }

  SlowPerson person_;
  std::thread dialog_;
  bool result_ = false;
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
  Choose(L"NONE", {L"Admin", L"User"});
  for (const auto& each : cases) {
    Open(L"Admin");
    EXPECT_TRUE(session_.LogOn(L"")) << "asks nothing, so waits for nobody";
    EXPECT_EQ(CurrentName(), L"User");
    if (each.logsOff) session_.LogOff(1);
    EXPECT_EQ(session_.IsLoggedOn(), !each.logsOff);
    EXPECT_TRUE(Close(each.answer));
    EXPECT_EQ(CurrentName(), each.current);
    EXPECT_EQ(control_.TakeLog(), each.log);
    session_.LogOff(1);
    control_.TakeLog();
  }
}

TEST_F(OpenQuestionTest, ASecondLogonThatWouldAskCountsAsCancelledUntilTheFirstHasItsAnswer) {
  Choose(L"QUILLGATE", {L"Anna"});
  Open(L"");
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_FALSE(Close({}));
  Open(L"");
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_TRUE(Close(L"Anna"));
  EXPECT_EQ(CurrentName(), L"Anna");
}

TEST_F(OpenQuestionTest, TheNameIsLookedUpAmongTheUsersOfTheAnswersTime) {
  const std::function<void()> changes[] = {[&] { Choose(L"QUILLGATE", {L"Bo"}); },
                                           [&] { Choose(L"WINDOWS", {L"Anna"}); },
                                           [&] { session_.SetUsers(nullptr); }};
  for (const auto& change : changes) {
    Choose(L"QUILLGATE", {L"Anna"});
    Open(L"");
    change();
    EXPECT_FALSE(Close(L"Anna"));
    EXPECT_THAT(control_.TakeLog(), IsEmpty());
  }
  Choose(L"QUILLGATE", {L"Anna"});
  Open(L"");
  Choose(L"QUILLGATE", {L"Bo"});
  EXPECT_TRUE(Close(L"Bo"));
}

TEST_F(OpenQuestionTest, UsersThatCameMeanwhileArePreferredToAFirstOne) {
  Choose(L"QUILLGATE", {});
  Open(L"", Question::kFirstUser);
  Choose(L"QUILLGATE", {L"Anna"});
  person_.Give(L"Intruder");
  ASSERT_TRUE(person_.AwaitQuestion(Question::kLogon));
  EXPECT_FALSE(Close(L"Intruder"));
  EXPECT_EQ(person_.usersTold, 0);
}

TEST_F(OpenQuestionTest, WhereNobodyCanBeAskedEveryQuestionCountsAsCancelled) {
  session_.SetPrompts(nullptr);
  Choose(L"NONE", {L"Admin", L"User"});
  EXPECT_TRUE(session_.LogOn(L"Admin"));
  EXPECT_EQ(CurrentName(), L"User");
}

TEST_F(OpenQuestionTest, WhoMustBeAskedIsKnownBeforehand) {
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
    EXPECT_EQ(session_.LogOnWithoutAsking(each.name), !each.asks) << each.system << each.name;
  }
}

}  // namespace
}  // namespace quillgate
