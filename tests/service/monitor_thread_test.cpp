// When the monitor runs its cycles, and that nothing stops it but a stop.
#include "service/monitor_thread.h"

#include <thread>

#include "service_test.h"
#include "wizard/wizard_state.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;

class MonitorThreadTest : public ServiceTest {
 protected:
  // The monitor has run its first cycle and sleeps.
  MonitorThreadTest() {
    AddUser(LogonSystem::kNone, L"User");
    objects_.LoadUsers();
    objects_.Session();
    objects_.Logons().LogOn();
    machine_.Time().HoldSleepers();
    objects_.StartMonitor([signs = signsOfLife_] { ++*signs; });
    EXPECT_TRUE(AwaitSleep(1000ms));
  }

  // Waits until the monitor sleeps, for that long in all.
  bool AwaitSleep(std::chrono::milliseconds total) {
    for (int attempt = 0; attempt < 10'000; ++attempt) {
      if (machine_.Time().TotalSlept() == total) return machine_.Time().AwaitSleepers(1);
      std::this_thread::sleep_for(1ms);
    }
    return false;
  }
  // Lets the monitor wake that often.
  void Wake(int times) {
    for (int i = 0; i < times; ++i) {
      const auto slept = machine_.Time().TotalSlept();
      machine_.Time().Advance(1000ms);
      ASSERT_TRUE(AwaitSleep(slept + 1000ms));
    }
  }

  // Whether a cycle has run since this was last asked: each one renews the mirrored session.
  bool HasCycled() {
    const bool cycled = !Query(L"SELECT * FROM CrashLog;").empty();
    Execute(L"DELETE FROM CrashLog;");
    return cycled;
  }

  // The monitor has a share: it ends after this fixture.
  std::shared_ptr<std::atomic<int>> signsOfLife_ = std::make_shared<std::atomic<int>>(0);
};

TEST_F(MonitorThreadTest, TheFirstCycleComesAtOnceAndTheNextAtTheTwentiethWake) {
  EXPECT_TRUE(HasCycled());
  for (int turn = 0; turn < 2; ++turn) {
    Wake(19);
    EXPECT_FALSE(HasCycled());
    Wake(1);
    EXPECT_TRUE(HasCycled());
  }
}

TEST_F(MonitorThreadTest, AFailingDatabaseIsLoggedOnceAndDoesNotEndTheCycles) {
  const std::size_t before = machine_.Events().size();
  Execute(L"ALTER TABLE CrashLog RENAME TO Gone;");
  Wake(40);
  EXPECT_EQ(machine_.Events().size(), before + 1);
  EXPECT_EQ(*signsOfLife_, 3) << "a failed cycle is one as well";
  EXPECT_EQ(machine_.EventTexts().back(), L"Database error: no such table: CrashLog");
  Execute(L"ALTER TABLE Gone RENAME TO CrashLog;");
  HasCycled();
  Wake(20);
  EXPECT_TRUE(HasCycled());
  Execute(L"ALTER TABLE CrashLog RENAME TO Gone;");
  Wake(20);
  EXPECT_EQ(machine_.Events().size(), before + 2) << "a new failure of the same kind";
}

TEST_F(MonitorThreadTest, ACycleGoesOnWithWhatAWizardInAnotherProcessHasStored) {
  Database database;
  Settings settings(database);
  WizardState advanced(database);
  advanced.ChooseType(false);
  advanced.ChooseSystem(LogonSystem::kQuillgate);
  advanced.SetAdministrator(L"Anna", L"swan");
  ASSERT_TRUE(advanced.Store(settings));
  EXPECT_FALSE(objects_.Users()->AddStored(User(L"Bo"))) << "over the wizard's";
  Wake(20);
  EXPECT_THAT(objects_.Users()->SortedNames(), testing::ElementsAre(L"Anna"));
  EXPECT_EQ(LoggedOn(), L"");
  EXPECT_FALSE(objects_.Session().IsOnline());
  WizardState simple(database);
  simple.SetOverridePassword(L"lark");
  ASSERT_TRUE(simple.Store(settings));
  Wake(40);
  EXPECT_TRUE(objects_.Users()->Find(L"Admin")->CheckPassword(L"lark"));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_EQ(Query(L"SELECT User FROM ConnLog;"), DbRows{{L"User"}}) << "ended by the first alone";
}

TEST_F(MonitorThreadTest, AStopIsSeenAtTheNextWake) {
  Wake(18);
  HasCycled();
  // The mutex is this thread's own, so that the wait is no wait.
  EXPECT_TRUE(objects_.Monitor()->Stop(5000));
  objects_.Monitor()->AwaitCycle();
  machine_.Time().Advance(2000ms);
  machine_.Time().Release();
  EXPECT_FALSE(HasCycled());
}

TEST_F(MonitorThreadTest, AMonitorThatWasNeverStartedEndsWithoutACycle) {
  HasCycled();
  { MonitorThread another(objects_.Session(), objects_.Events(), {}); }
  EXPECT_FALSE(HasCycled());
}

}  // namespace
}  // namespace quillgate
