// The process's own objects: its events, the name of the one who is logged on to Windows, and the
// change to another logon system while the service runs.
#include "service/process_objects.h"

#include "service_test.h"

namespace quillgate {
namespace {

using testing::ElementsAre;

using ProcessObjectsTest = ServiceTest;

TEST_F(ProcessObjectsTest, EventsAreInformationOfTheServiceOrPrintedAndSignsStandForThemselves) {
  EventLog& events = objects_.Events();
  events.LogEvent(L"%s%n%ls 100%");
  events.LogEvent(std::wstring(1000, L'x'));
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"%s%n%ls 100%", std::wstring(255, L'x')));
  const platform::LoggedEvent event = machine_.Events().front();
  EXPECT_EQ(event.source, L"qgserv");
  EXPECT_EQ(event.type, EVENTLOG_INFORMATION_TYPE);
  EXPECT_EQ(event.id, 0u);

  events.SetRunningAsService(false);
  testing::internal::CaptureStdout();
  events.LogEvent(L"%s%n%ls 100%");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "%s%n%ls 100%\n");
}

TEST_F(ProcessObjectsTest, ASessionsEndTellsWhyAndHowMuchOnLinesOfTheirOwn) {
  const std::pair<AccessReason, std::wstring> cases[] = {
      {AccessReason::kHourBlocked, L"hour not allowed"},
      {AccessReason::kTimeUsedUp, L"time limit reached"},
      {AccessReason::kDownloadUsedUp, L"download limit reached"},
      {AccessReason::kNobodyLoggedOn, L"logged off"}};
  for (const auto& [reason, words] : cases) {
    SessionEventLog(objects_.Events())
        .SessionEnded(
            {.user = L"Anna", .seconds = 60, .bytesSent = 7, .bytesReceived = 5'000'000'000},
            reason);
    EXPECT_EQ(machine_.EventTexts().back(),
              L"Session ended\nReason: " + words +
                  L"\nSeconds: 60\nBytes received: 5000000000\nBytes sent: 7\nUser: Anna");
  }
}

TEST_F(ProcessObjectsTest, AnExceptionIsNotifiedByItsText) {
  const auto logThrown = [this](const auto& exception) {
    try {
      throw exception;
    } catch (...) {
      objects_.Events().LogCurrentException();
    }
  };
  logThrown(DBerror(L"no such table", 1));
  logThrown(std::runtime_error("Could not create thread."));
  logThrown(7);
  EXPECT_THAT(machine_.EventTexts(), ElementsAre(L"Database error: no such table",
                                                 L"Could not create thread.", L"Unknown failure"));
}

TEST_F(ProcessObjectsTest, TheWindowsNameIsTheValueOfExactlyOneRow) {
  WindowsIdentity& identity = objects_.Identity();
  EXPECT_THROW(identity.UserName(), DBerror);
  Execute(L"CREATE TABLE WlNpData (Key, Value);");
  EXPECT_EQ(identity.UserName(), L"");
  Execute(L"INSERT INTO WlNpData VALUES ('Other', 'Bo');");
  EXPECT_EQ(identity.UserName(), L"");
  Execute(L"INSERT INTO WlNpData VALUES ('UserName', 'Anna');");
  EXPECT_EQ(identity.UserName(), L"Anna");
  Execute(L"INSERT INTO WlNpData VALUES ('UserName', 'Anna');");
  EXPECT_EQ(identity.UserName(), L"");
}

TEST_F(ProcessObjectsTest, AnotherLogonSystemEndsTheSessionLoadsItsUsersAndAsksNobody) {
  AddUser(LogonSystem::kQuillgate, L"Bo");
  AddWindowsUser();
  objects_.BeginSession();
  EXPECT_EQ(LoggedOn(), L"User");
  const struct {
    const wchar_t *word, *table, *loggedOn;
  } cases[] = {{L"QUILLGATE", L"Users_Quillgate", L""},
               {L"WINDOWS", L"Users_Windows", L"Anna"},
               {L"NONE", L"Users_None", L"Admin"}};
  for (const auto& each : cases) {
    EXPECT_TRUE(objects_.Switch([&] {
      Set(SettingKey::kLogonSystem, each.word);
      return true;
    }));
    EXPECT_EQ(objects_.Users()->Table(), each.table);
    EXPECT_EQ(LoggedOn(), each.loggedOn);
    EXPECT_EQ(objects_.Session().IsOnline(), LoggedOn() != L"") << each.word;
  }
  EXPECT_EQ(Query(L"SELECT User FROM ConnLog;"), (DbRows{{L"User"}, {L"Anna"}}));
}

TEST_F(ProcessObjectsTest, ALogonSystemThatCouldNotBeStoredChangesNothing) {
  objects_.BeginSession();
  EXPECT_FALSE(objects_.Switch([] { return false; }));
  EXPECT_EQ(LoggedOn(), L"User");
  EXPECT_TRUE(objects_.Session().IsOnline());
}

}  // namespace
}  // namespace quillgate
