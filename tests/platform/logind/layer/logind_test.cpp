// Who is at the machine's seat, and when it sleeps: as a fake logind tells it on a bus of its own.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "logind/fake_logind.h"
#include "platform/account/session_watch.h"

namespace {

using logind::FakeLogind;
using testing::ElementsAre;

// Writes down what happens: "anna* bo!" is a seat with anna's session on the screen, bo's locked.
class Recorder final : public platform::SessionObserver {
 public:
  explicit Recorder(FakeLogind& logind) : logind_(logind) {}

  void OnSeat(const platform::SeatState& state) override {
    std::string seat;
    for (const platform::SeatSession& each : state.sessions) {
      seat += (seat.empty() ? "" : " ") + std::string(each.user.begin(), each.user.end()) +
              (each.locked ? "!" : "") + (each.id == state.activeId ? "*" : "");
    }
    Add(seats_, seat);
  }
  void OnSuspend(const std::stop_token& ended) override {
    Add(events_, logind_.AwaitDelay(true) ? "suspend" : "suspend without a delay");
    std::unique_lock lock(mutex_);
    if (hangs) changed_.wait(lock, ended, [] { return false; });
  }
  void OnResume(bool announced) override { Add(events_, announced ? "resume" : "critical resume"); }

  // The seats that were read from now on until the expected one, for 10 s.
  std::vector<std::string> SeatsUntil(const std::string& last,
                                      const std::function<void()>& happens) {
    std::unique_lock lock(mutex_);
    seats_.clear();
    lock.unlock();
    happens();
    lock.lock();
    const auto isThere = [&] { return !seats_.empty() && seats_.back() == last; };
    changed_.wait_for(lock, std::chrono::seconds(10), isThere);
    return seats_;
  }
  std::vector<std::string> AwaitEvents(std::size_t count) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, std::chrono::seconds(10), [&] { return events_.size() >= count; });
    return events_;
  }

  std::atomic<bool> hangs = false;

 private:
  void Add(std::vector<std::string>& list, const std::string& entry) {
    const std::lock_guard lock(mutex_);
    list.push_back(entry);
    changed_.notify_all();
  }

  FakeLogind& logind_;
  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::vector<std::string> seats_;
  std::vector<std::string> events_;
};

class Logind : public testing::Test {
 protected:
  void SetUp() override {
    const std::string whyNot = FakeLogind::WhyNot();
    if (!whyNot.empty()) GTEST_SKIP() << whyNot;
    logind_ = std::make_unique<FakeLogind>();
    recorder_ = std::make_unique<Recorder>(*logind_);
    watch_ = platform::WatchSessions(*recorder_, platform::SleepNotice::kBeforeAndAfter);
    ASSERT_TRUE(logind_->AwaitDelay(true));
  }
  void ExpectSeat(const std::string& seat, const char* what, const std::function<void()>& happens) {
    const auto seats = recorder_->SeatsUntil(seat, happens);
    EXPECT_EQ(seats.empty() ? "not read" : seats.back(), seat) << what;
  }

  std::unique_ptr<FakeLogind> logind_;
  std::unique_ptr<Recorder> recorder_;
  std::unique_ptr<platform::SessionWatch> watch_;
};

TEST_F(Logind, OnlyPeopleAtTheSeatAreThereAndOneOfThemOnTheScreen) {
  const pid_t leader = ::fork();
  ASSERT_GE(leader, 0);
  if (leader == 0) {
    ::alarm(60);
    for (;;)
      ::pause();
  }
  const struct {
    const char *what, *id;
    logind::Session session;
    const char *active, *seat;
  } steps[] = {
      {"a greeter", "c1", {"gdm", "greeter"}, "c1", ""},
      {"a logon", "1", {"anna"}, "1", "anna*"},
      {"a lock", "1", {.user = "anna", .locked = true}, "1", "anna!*"},
      {"an unlock", "1", {"anna"}, "1", "anna*"},
      {"ssh", "2", {"bo", "user", ""}, "1", "anna*"},
      {"cron", "3", {"bo", "background", ""}, "1", "anna*"},
      {"a lingering user", "4", {"bo", "manager", ""}, "1", "anna*"},
      {"another screen", "5", {"bo", "user", "seat1"}, "1", "anna*"},
      {"a switch to the greeter", "c1", {"gdm", "greeter"}, "c1", "anna"},
      {"another logon", "6", {"EXAMPLE\\cia"}, "6", "anna cia*"},
      {"a switch back", "6", {"EXAMPLE\\cia"}, "1", "anna* cia"},
      {"processes left behind", "1", {"anna", "user", "seat0", "closing"}, "1", "cia"},
      {"a leader", "7", {"dag@b.org", "user-early", "seat0", "", false, leader}, "7", "cia dag*"},
  };
  for (const auto& [what, id, session, active, seat] : steps)
    ExpectSeat(seat, what, [&] { logind_->Put(id, session, active); });
  ExpectSeat("cia dag*", "logind's restart", [&] { logind_->Restart(); });
  ExpectSeat("dag*", "a logoff behind the screen", [&] { logind_->Remove("6"); });
  ExpectSeat("", "a death without a logoff", [&] { ::kill(leader, SIGKILL); });
  ::waitpid(leader, nullptr, 0);
}

TEST_F(Logind, SleepIsDelayedUntilItHasBeenAnswered) {
  logind_->SignalSleep(true);
  EXPECT_TRUE(logind_->AwaitDelay(false));
  logind_->SignalSleep(false);
  EXPECT_TRUE(logind_->AwaitDelay(true));
  logind_->ForgeSleep(true);  // of somebody else: not followed
  logind_->Restart();
  EXPECT_TRUE(logind_->AwaitDelay(true));
  logind_->SignalSleep(false);  // the end of nothing
  logind_->SignalSleep(true);
  EXPECT_TRUE(logind_->AwaitDelay(false));
  EXPECT_THAT(recorder_->AwaitEvents(3), ElementsAre("suspend", "resume", "suspend"));
}

TEST_F(Logind, AnAnswerThatDoesNotComeDoesNotHoldUpTheEndOfTheWatch) {
  recorder_->hangs = true;
  logind_->SignalSleep(true);
  recorder_->AwaitEvents(1);
  watch_.reset();
  EXPECT_TRUE(logind_->AwaitDelay(false));
}

}  // namespace
