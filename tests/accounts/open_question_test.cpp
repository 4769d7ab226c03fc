// What happens while a logon asks a person, who takes as long as they like.
#include <gmock/gmock.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "accounts/logon_session.h"
#include "accounts_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
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

// Whose session runs, and whose ran before.
class RecordingControl final : public SessionControl {
 public:
  explicit RecordingControl(const LogonSession& session) : session_(session) {}

  void Reevaluate() override { Note(L"+"); }
  void EndSession() override { Note(L"-"); }

  std::vector<std::wstring> Log() {
    const std::lock_guard lock(mutex_);
    return log_;
  }

 private:
  void Note(const std::wstring& sign) {
    const auto user = session_.CurrentUser();
    const std::lock_guard lock(mutex_);
    log_.push_back(sign + (user == nullptr ? L"" : user->Name()));
  }

  const LogonSession& session_;
  std::mutex mutex_;
  std::vector<std::wstring> log_;
};

class OpenQuestionTest : public AccountsTest {
 protected:
  OpenQuestionTest() {
    session_.SetPrompts(&person_);
    session_.SetSessionControl(&control_);
  }
  ~OpenQuestionTest() override {
    if (dialog_.joinable()) dialog_.join();
  }

  void Choose(LogonSystem system, std::wstring_view word, const std::vector<std::wstring>& names) {
    settings_.SetSetting(SettingKey::kLogonSystem, word);
    const auto users = std::make_shared<UserCollection>(system, database_);
    for (const std::wstring& name : names)
      users->Add(MakeUser(name));
    session_.SetUsers(users);
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

  std::wstring LoggedOn() const {
    const auto user = session_.CurrentUser();
    return user == nullptr ? L"(nobody)" : user->Name();
  }

  class NoIdentity final : public WindowsIdentity {
   public:
    std::wstring UserName() override { return L"Anna"; }
  };

  SlowPerson person_;
  NoIdentity identity_;
  LogonSession session_{settings_, identity_};
  RecordingControl control_{session_};
  std::thread dialog_;
  bool result_ = false;
};

TEST_F(OpenQuestionTest, ALogOffTakesEffectAtOnceAndTheAnswerStillLogsOn) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  Open(L"Admin");
  EXPECT_TRUE(session_.LogOn(L"")) << "asks nothing, so waits for nobody";
  EXPECT_EQ(LoggedOn(), L"User");
  session_.LogOff(1);
  EXPECT_EQ(LoggedOn(), L"(nobody)");
  EXPECT_TRUE(Close(L"Admin"));
  EXPECT_EQ(LoggedOn(), L"Admin");
  EXPECT_THAT(control_.Log(), ElementsAre(L"+User", L"-User", L"+Admin"));
}

TEST_F(OpenQuestionTest, AnAcceptedAnswerEndsTheSessionThatBeganMeanwhile) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  Open(L"Admin");
  session_.LogOn(L"");
  EXPECT_TRUE(Close(L"Admin"));
  EXPECT_THAT(control_.Log(), ElementsAre(L"+User", L"-User", L"+Admin"));
}

TEST_F(OpenQuestionTest, ACancelledAnswerLeavesTheSessionThatBeganMeanwhile) {
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  Open(L"Admin");
  session_.LogOn(L"");
  EXPECT_TRUE(Close({}));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_THAT(control_.Log(), ElementsAre(L"+User"));
}

TEST_F(OpenQuestionTest, ASecondLogonThatWouldAskCountsAsCancelled) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  Open(L"");
  EXPECT_FALSE(session_.LogOn(L""));
  EXPECT_TRUE(Close(L"Anna"));
  EXPECT_EQ(LoggedOn(), L"Anna");
}

TEST_F(OpenQuestionTest, AfterACancelledQuestionTheNextOneIsAskedAgain) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  Open(L"");
  EXPECT_FALSE(Close({}));
  Open(L"");
  EXPECT_TRUE(Close(L"Anna"));
}

TEST_F(OpenQuestionTest, TheNameIsLookedUpAmongTheUsersOfTheAnswersTime) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  Open(L"");
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Bo"});
  EXPECT_FALSE(Close(L"Anna"));
  EXPECT_EQ(LoggedOn(), L"(nobody)");
  Open(L"");
  EXPECT_TRUE(Close(L"Bo"));
}

TEST_F(OpenQuestionTest, AnAnswerForALogonSystemOfThePastLogsNobodyOn) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  Open(L"");
  Choose(LogonSystem::kWindows, L"WINDOWS", {L"Anna"});
  EXPECT_FALSE(Close(L"Anna"));
  EXPECT_THAT(control_.Log(), IsEmpty());
}

TEST_F(OpenQuestionTest, UsersThatCameMeanwhileArePreferredToAFirstOne) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {});
  Open(L"", Question::kFirstUser);
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  person_.Give(L"Intruder");
  ASSERT_TRUE(person_.AwaitQuestion(Question::kLogon));
  EXPECT_FALSE(Close(L"Intruder"));
  EXPECT_EQ(person_.usersTold, 0);
}

TEST_F(OpenQuestionTest, TheUsersMayGoWhileTheQuestionIsOpen) {
  Choose(LogonSystem::kQuillgate, L"QUILLGATE", {L"Anna"});
  Open(L"");
  session_.SetUsers(nullptr);
  EXPECT_FALSE(Close(L"Anna"));
}

TEST_F(OpenQuestionTest, WhereNobodyCanBeAskedEveryQuestionCountsAsCancelled) {
  session_.SetPrompts(nullptr);
  Choose(LogonSystem::kNone, L"NONE", {L"Admin", L"User"});
  EXPECT_TRUE(session_.LogOn(L"Admin"));
  EXPECT_EQ(LoggedOn(), L"User");
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
