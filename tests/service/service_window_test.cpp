// The service's first steps, and what it does when the machine sleeps, wakes or changes hands.
#include "service/service_window.h"

#include "platform/kernel/modules.h"
#include "service_test.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::ElementsAre;

constexpr wchar_t kWelcome[] =
    L"Welcome to Quillgate!: Right-click this icon to display the Quillgate menu from which you "
    L"can access all program features.";

class ServiceWindowTest : public ServiceTest {
 protected:
  // One user for each system, who is logged on to Windows as well. The system is NONE.
  ServiceWindowTest() {
    objects_.Indicator().RelayWithoutTray();
    Set(SettingKey::kFirstStart, L"0");
    AddUser(LogonSystem::kNone, L"User");
    AddUser(LogonSystem::kQuillgate, L"Bo");
    AddWindowsUser();
  }

  void Start() {
    objects_.BeginSession();
    ASSERT_TRUE(window_.Create());
  }
  LRESULT Send(UINT message, WPARAM wParam) {
    return ::SendMessageW(window_.Window(), message, wParam, 0);
  }
  void MirrorSession() {
    Execute(L"INSERT INTO CrashLog VALUES ('Anna', '20', '1', '2', '2005-03-14 08:00:00');");
  }

  ServiceWindow window_{objects_};
};

struct Start {
  const wchar_t *system, *firstStart, *loggedOn;  // firstStart null: not set yet
};

class ServiceStartTest : public ServiceWindowTest, public testing::WithParamInterface<Start> {};

TEST_P(ServiceStartTest, OnlyTheSystemsWithoutALogonLogOnByThemselves) {
  const auto& [system, firstStart, loggedOn] = GetParam();
  Execute(L"DELETE FROM Settings;");
  Set(SettingKey::kLogonSystem, system);
  if (firstStart != nullptr) Set(SettingKey::kFirstStart, firstStart);
  const bool first = Setting(SettingKey::kFirstStart) != L"0";
  Start();
  EXPECT_EQ(LoggedOn(), loggedOn);
  EXPECT_EQ(objects_.Session().IsOnline(), !LoggedOn().empty());
  EXPECT_EQ(Setting(SettingKey::kFirstStart), L"0");
  EXPECT_EQ(std::ranges::count(machine_.EventTexts(), kWelcome), first ? 1 : 0);
}

constexpr struct Start kStarts[] = {
    {L"NONE", nullptr, L"User"},   {L"NONE", L"1", L"User"},    {L"NONE", L"0", L"User"},
    {L"WINDOWS", L"1", L"Anna"},   {L"WINDOWS", L"0", L"Anna"}, {L"windows", L"0", L"User"},
    {L"Quillgate", L"0", L"User"}, {L"QUILLGATE", L"1", L""},   {L"QUILLGATE", L"0", L""},
};
INSTANTIATE_TEST_SUITE_P(Systems, ServiceStartTest, testing::ValuesIn(kStarts));

TEST_F(ServiceWindowTest, ASessionThatACrashLeftIsRecoveredBeforeAnyoneLogsOn) {
  MirrorSession();
  Start();
  EXPECT_THAT(Query(L"SELECT User, Seconds FROM ConnLog;"), ElementsAre(DbRow{L"Anna", L"20"}));
  EXPECT_THAT(Query(L"SELECT * FROM CrashLog;"), testing::IsEmpty());
}

TEST_F(ServiceWindowTest, ADatabaseThatFailsAtTheStartLeavesTheGateClosed) {
  Execute(L"DROP TABLE ConnLog;");
  Execute(L"DROP TABLE CrashLog;");
  Start();
  EXPECT_FALSE(objects_.Session().IsOnline());
  EXPECT_THAT(machine_.EventTexts(), Contains(L"Database error: no such table: ConnLog"));
}

TEST_F(ServiceWindowTest, AMissingHookIsNotifiedWithItsError) {
  hook_->FailOpenWith(ERROR_ACCESS_DENIED);
  Start();
  EXPECT_THAT(machine_.EventTexts(),
              Contains(L"The IP filter hook driver is not available, so traffic cannot be blocked. "
                       L"Error=5"));
}

TEST_F(ServiceWindowTest, ASuspensionIsAllowedAndEndsTheSessionAndOtherPowerEventsAreTheSystems) {
  Start();
  for (const WPARAM event : {1, 2, 3, 5, 8, 18}) {
    EXPECT_EQ(Send(WM_POWERBROADCAST, event),
              ::DefWindowProcW(window_.Window(), WM_POWERBROADCAST, event, 0));
    EXPECT_EQ(LoggedOn(), L"User") << event;
  }
  EXPECT_EQ(Send(WM_POWERBROADCAST, PBT_APMQUERYSUSPEND), TRUE);
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_EQ(Send(WM_POWERBROADCAST, PBT_APMSUSPEND), TRUE);
  EXPECT_EQ(LoggedOn(), L"");
  EXPECT_THAT(Query(L"SELECT User FROM ConnLog;"), ElementsAre(DbRow{L"User"}));
  EXPECT_THAT(machine_.EventTexts(), Contains(L"Session started\nUser: User"));
  EXPECT_THAT(machine_.EventTexts(),
              Contains(testing::StartsWith(L"Session ended\nReason: logged off\n")));
  EXPECT_EQ(Send(WM_POWERBROADCAST, PBT_APMRESUMESUSPEND), TRUE);
  EXPECT_EQ(LoggedOn(), L"User");
}

TEST_F(ServiceWindowTest, ACriticalResumeRecoversTheMirroredSessionFirst) {
  Start();
  MirrorSession();
  EXPECT_EQ(Send(WM_POWERBROADCAST, PBT_APMRESUMECRITICAL), TRUE);
  EXPECT_EQ(Query(L"SELECT User FROM ConnLog ORDER BY rowid;"), (DbRows{{L"Anna"}, {L"User"}}));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_TRUE(objects_.Session().IsOnline());
}

TEST_F(ServiceWindowTest, ADisconnectedConsoleLogsOffButForTheWindowsSystem) {
  Start();
  for (const WPARAM reason : {1, 3, 4, 5, 6, 7, 8})
    Send(WM_WTSSESSION_CHANGE, reason);
  EXPECT_EQ(LoggedOn(), L"User");
  Set(SettingKey::kLogonSystem, L"WINDOWS");
  Send(WM_WTSSESSION_CHANGE, WTS_CONSOLE_DISCONNECT);
  EXPECT_EQ(LoggedOn(), L"User");
  Set(SettingKey::kLogonSystem, L"NONE");
  Send(WM_WTSSESSION_CHANGE, WTS_CONSOLE_DISCONNECT);
  EXPECT_EQ(LoggedOn(), L"");
}

// Where the session notifications go, with which flags; at the end again, with none.
std::vector<std::pair<HWND, DWORD>> notified;

BOOL WINAPI Register(HWND window, DWORD flags) {
  notified.emplace_back(window, flags);
  return TRUE;
}
BOOL WINAPI Unregister(HWND window) {
  return Register(window, 0);
}

// Has no window of its own, which would have loaded the system's library already.
class SessionNotificationTest : public ServiceTest {
 protected:
  SessionNotificationTest() {
    objects_.Indicator().RelayWithoutTray();
    Set(SettingKey::kFirstStart, L"0");
  }
};

TEST_F(SessionNotificationTest, TheyLastAsLongAsTheWindow) {
  for (const bool complete : {false, true}) {
    platform::ExportTable exports = {
        {"WTSRegisterSessionNotification", reinterpret_cast<FARPROC>(Register)}};
    if (complete) {
      exports["WTSUnRegisterSessionNotification"] = reinterpret_cast<FARPROC>(Unregister);
    }
    platform::RegisterBuiltInModule(L"wtsapi32.dll", exports);
    notified.clear();
    std::optional<ServiceWindow> window(objects_);
    ASSERT_TRUE(window->Create());
    const HWND handle = window->Window();
    decltype(notified) expected;
    if (complete) expected = {{handle, 1}};
    EXPECT_EQ(notified, expected);
    window.reset();
    if (complete) expected = {{handle, 1}, {handle, 0}};
    EXPECT_EQ(notified, expected);
    platform::UnregisterBuiltInModule(L"wtsapi32.dll");
  }
}

}  // namespace
}  // namespace quillgate
