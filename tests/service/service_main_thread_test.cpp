// The service from its start to its stop, on a thread of its own.
#include "service/service_main_thread.h"

#include <thread>

#include "service_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;

class ServiceMainThreadTest : public ServiceTest {
 protected:
  ServiceMainThreadTest() {
    machine_.Time().HoldSleepers();
    Set(SettingKey::kFirstStart, L"0");
  }
  ~ServiceMainThreadTest() override { Stop(); }

  // Returns when the first cycle is over and the monitor sleeps.
  void Start() {
    thread_ = std::thread([this] { ServiceMainThread(module_, objects_).Run(); });
    ASSERT_TRUE(machine_.Time().AwaitSleepers(1));
  }
  void Stop() {
    if (!thread_.joinable()) return;
    module_.HandleControl(SERVICE_CONTROL_STOP);
    EXPECT_TRUE(machine_.Time().AwaitSleepers(2));
    machine_.Time().Advance(500ms);
    thread_.join();
  }

  std::thread thread_;
};

TEST_F(ServiceMainThreadTest, TheNoneSystemBeginsWithItsTwoUsersAndAnOpenGate) {
  Start();
  EXPECT_EQ(Query(L"SELECT Name, Privileges FROM Users_None ORDER BY Name;"),
            (DbRows{{L"Admin", L"1"}, {L"User", L"0"}}));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_TRUE(objects_.Session().IsOnline());
  EXPECT_EQ(Query(L"SELECT User FROM CrashLog;"), DbRows{{L"User"}})
      << "the first cycle runs at once";
  EXPECT_EQ(Setting(SettingKey::kFirstDayOfWeek), L"1") << "the locale's";
}

TEST_F(ServiceMainThreadTest, UsersThatCannotBeReadAreNotReplacedByNewOnes) {
  AddUser(LogonSystem::kNone, L"Admin");
  Execute(L"ALTER TABLE Users_None RENAME COLUMN Name TO Gone;");
  Start();
  EXPECT_EQ(Query(L"SELECT Gone FROM Users_None;").size(), 1u);
  EXPECT_EQ(LoggedOn(), L"");
  EXPECT_FALSE(objects_.Session().IsOnline());
}

TEST_F(ServiceMainThreadTest, AUserThatCannotBeReadIsLoggedAndNoneIsAdded) {
  AddUser(LogonSystem::kNone, L"User");
  Execute(L"UPDATE Users_None SET ConnectHours = '0';");
  Start();
  EXPECT_THAT(machine_.EventTexts(),
              Contains(L"The stored user cannot be read whole, so its rules may not hold: User"));
  EXPECT_THAT(Query(L"SELECT Name FROM Users_None;"), ElementsAre(DbRow{L"User"}));
}

TEST_F(ServiceMainThreadTest, AStopThatIsOverdueGoesOnWithoutTheMainRoutine) {
  for (const bool inTime : {true, false}) {
    const KernelHandle mainRoutine(::CreateMutexW(nullptr, TRUE, nullptr));
    std::atomic<bool> overdue = false;
    StopGuard guard(mainRoutine.Get(), [&] { overdue = true; });
    guard.Start();
    if (inTime) ::ReleaseMutex(mainRoutine.Get());
    // A guard that has ended has nothing to be waited for.
    for (int i = 0; i < 10'000 && guard.Stop(0); ++i) {
      machine_.Time().Advance(inTime ? 0s : 1s);
      std::this_thread::sleep_for(1ms);
    }
    EXPECT_FALSE(guard.Stop(0));
    EXPECT_EQ(overdue, !inTime);
  }
  objects_.Session().Disable();
  hook_->ClearCodes();
  objects_.OpenGateForGood();
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookPass));
}

TEST_F(ServiceMainThreadTest, LanguageAndFirstDayOfTheWeekComeFromTheSettings) {
  Set(SettingKey::kLanguage, L"29");
  Set(SettingKey::kFirstDayOfWeek, L"3");
  Start();
  EXPECT_EQ(objects_.Calendar().GetFirstDayOfWeek(), 3);
  EXPECT_EQ(Setting(SettingKey::kFirstDayOfWeek), L"3");
  EXPECT_EQ(objects_.Catalogue().InterfaceLanguageId(), 0x41D);
}

TEST_F(ServiceMainThreadTest, AfterTheStopNothingUsesUsersOrDatabase) {
  Start();
  Stop();
  EXPECT_EQ(machine_.Time().TotalSlept(), 1500ms) << "the monitor's wake and the pause";
  EXPECT_THAT([this] { Execute(L"DELETE FROM CrashLog;"); },
              testing::Throws<DBerror>(testing::Property(&DBerror::Message, L"No database open.")));
  module_.HandleControl(kControlWindowsLogoff);
  EXPECT_EQ(LoggedOn(), L"");
  module_.HandleControl(kControlWindowsLogon);
  EXPECT_EQ(LoggedOn(), L"") << "there are no users";
}

}  // namespace
}  // namespace quillgate
