// The enforcement cycle, the decisions at logon and log-off, and what becomes of both when the
// database fails.
#include <fcntl.h>
#include <unistd.h>

#include <thread>

#include "session_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Balloon = RecordingIndicator::Balloon;

class EnforcementTest : public SessionTest {
 protected:
  // The balloon of a gate that was closed, alone.
  static auto Disabled(const std::wstring& reason) {
    return ElementsAre(Balloon{L"Internet connection disabled", reason, BalloonIcon::kError});
  }
  bool IsOnlineAfterCycle() {
    session_->RunEnforcementCycle();
    return session_->IsOnline();
  }
  // Two cycles give one warning. Without a number what is left is enough for none.
  void ExpectWarning(const std::wstring& before, const wchar_t* number, const wchar_t* after) {
    session_->RunEnforcementCycle();
    session_->RunEnforcementCycle();
    std::vector<Balloon> expected;
    if (number != nullptr) {
      const std::wstring text = before + number + after;
      expected.push_back({L"Quillgate - Warning!", text, BalloonIcon::kWarning});
    }
    EXPECT_EQ(indicator_.balloons, expected);
  }
};

TEST_F(EnforcementTest, OnlyALogonThatIsRefusedShowsABalloon) {
  session_->Disable();
  hook_->ClearCodes();
  ASSERT_TRUE(logon_.LogOn({}));
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookPass));
  EXPECT_THAT(indicator_.balloons, IsEmpty());
  BlockHour(kThisHour);
  logon_.LogOn({});
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(indicator_.balloons, Disabled(L"You are not allowed to connect at this hour."));
}

TEST_F(EnforcementTest, TheGateIsClosedForNobodyAndNoSessionIsWritten) {
  Insert(L"CrashLog", {L"Bo", L"1", L"1", L"1", L""});
  logon_.LogOff(1);
  EXPECT_FALSE(session_->IsOnline());
  session_->Enable();
  session_->Reevaluate();
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(indicator_.balloons, IsEmpty());
  session_->Enable();
  EXPECT_FALSE(IsOnlineAfterCycle());
  EXPECT_THAT(indicator_.balloons, Disabled(L""));
  EXPECT_THAT(Rows(L"ConnLog"), IsEmpty());
  EXPECT_THAT(Rows(L"CrashLog"), IsEmpty());
}

TEST_F(EnforcementTest, ALimitThatIsReachedWritesTheSessionClosesTheGateAndSaysWhy) {
  LimitTime(true, 60);
  LogOn();
  Pass(3601s);
  Count(65536, 1000);

  EXPECT_FALSE(IsOnlineAfterCycle());
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookBlockLocal, kHookBlock));
  EXPECT_THAT(indicator_.balloons, Disabled(L"Your connection time limit has been reached."));
  EXPECT_THAT(Rows(L"ConnLog"), ElementsAre(Row(L"Anna", L"3601")));
  EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Anna", L"0", L"0", L"0")));

  // The written session counts, so the gate stays closed; and silently.
  indicator_.balloons.clear();
  EXPECT_FALSE(IsOnlineAfterCycle());
  EXPECT_THAT(indicator_.balloons, IsEmpty());
  EXPECT_THAT(Rows(L"ConnLog"), SizeIs(1));
}

TEST_F(EnforcementTest, TheEndOfAnAllowedHourClosesAndTheNextOneOpensWithABalloon) {
  BlockHour(kThisHour + 1);
  LogOn();
  EXPECT_TRUE(IsOnlineAfterCycle());
  Pass(55min);
  EXPECT_FALSE(IsOnlineAfterCycle());
  Pass(1h);
  indicator_.balloons.clear();
  EXPECT_TRUE(IsOnlineAfterCycle());
  EXPECT_EQ(session_->SecondsOnline(), 0u) << "a new session";
  EXPECT_THAT(indicator_.balloons, ElementsAre(Balloon{L"Quillgate", L"Internet connection enabled",
                                                       BalloonIcon::kInformation}));
}

TEST_F(EnforcementTest, AReplacedLimitIsJudgedByTheNextCycleAlsoIfItIsOfAnotherPeriod) {
  Insert(L"ConnLog", {L"Anna", L"7200", L"0", L"0", L"2005-03-01 08:00:00"});
  LogOn();
  Pass(61s);
  const std::tuple<std::int32_t, LimitPeriod, bool> cases[] = {{1, LimitPeriod::kDay, false},
                                                               {60, LimitPeriod::kDay, true},
                                                               {60, LimitPeriod::kMonth, false},
                                                               {180, LimitPeriod::kMonth, true}};
  for (const auto& [minutes, period, online] : cases) {
    LimitTime(true, minutes, period);
    EXPECT_EQ(IsOnlineAfterCycle(), online) << minutes;
  }
  // Totals of the other period that cannot be read keep no gate open.
  BreakLog();
  LimitTime(true, 180);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_TRUE(session_->IsOnline()) << "judged by the last ones";
  BlockHour(kThisHour);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
}

TEST_F(EnforcementTest, AUserIsNeverJudgedHalfReplaced) {
  LimitTime(false, 0);
  LogOn();
  Pass(1s);
  std::thread page([this] {
    for (int i = 0; i < 2000; ++i)
      LimitTime(i % 2 == 0, i % 2 == 0 ? 60 : 0);
  });
  for (int i = 0; i < 2000; ++i)
    EXPECT_EQ(session_->CheckAccess(false), AccessReason::kAllowed);
  page.join();
}

TEST_F(EnforcementTest, TheCycleMirrorsTheSessionUntilItsEndWritesItAndKeepsTheGateClosed) {
  LogOn();
  Pass(20s);
  session_->RunEnforcementCycle();
  Pass(20s);
  Count(5, 0);
  session_->RunEnforcementCycle();
  EXPECT_THAT(Rows(L"CrashLog"), ElementsAre(Row(L"Anna", L"40", L"0", L"5")));
  Pass(3s);
  session_->EndSession();
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(Rows(L"ConnLog"), ElementsAre(Row(L"Anna", L"43", L"0", L"5")));
  EXPECT_THAT(Rows(L"CrashLog"), IsEmpty());
  // A cycle may run when the user is not yet logged off.
  EXPECT_FALSE(IsOnlineAfterCycle());
  EXPECT_THAT(indicator_.balloons, IsEmpty());
  session_->Reevaluate();
  EXPECT_TRUE(session_->IsOnline());
}

TEST_F(EnforcementTest, TheTimeWarningObeysItsSettingsAndRoundsUp) {
  const struct {
    const wchar_t *on, *threshold;
    bool limited;
    int secondsLeft;
    const wchar_t* minutes;  // null: no warning
  } cases[] = {
      {nullptr, nullptr, true, 600, nullptr}, {nullptr, nullptr, true, 599, L"10"},
      {nullptr, nullptr, true, 60, L"2"},     {nullptr, nullptr, true, 59, L"1"},
      {nullptr, nullptr, true, 0, L"1"},      {L"YES", L"59", true, 3599, nullptr},
      {L"Yes", L"60", true, 3599, nullptr},   {L"YES", L"0", true, 0, nullptr},
      {L"YES", L"x", true, 0, nullptr},       {L"YES", L"60", false, 3599, nullptr},
      {L"YES", L"60", true, 3599, L"60"},     {L"YES", L"61", true, 3600, L"61"},
  };
  for (const auto& each : cases) {
    LimitTime(each.limited, 60);
    if (each.on != nullptr) {
      settings_.SetSetting(SettingKey::kTimeWarnings, each.on);
      settings_.SetSetting(SettingKey::kTimeWarningMinutes, each.threshold);
    }
    LogOnAfresh();
    Pass(std::chrono::seconds(3600 - each.secondsLeft));
    SCOPED_TRACE(each.secondsLeft);
    ExpectWarning(L"You have less than ", each.minutes,
                  L" minutes left before the Internet connection will be disabled.");
  }
  session_->Reevaluate();
  session_->RunEnforcementCycle();
  EXPECT_THAT(indicator_.balloons, SizeIs(2)) << "no warning after the users were changed";
}

TEST_F(EnforcementTest, TheDownloadWarningObeysItsSettingsAndRoundsDown) {
  const struct {
    const wchar_t *on, *threshold;
    std::uint64_t received;
    const wchar_t* left;  // null: no warning
  } cases[] = {
      {nullptr, nullptr, 20 * kMegabyte, nullptr}, {L"YES", L"0", 20 * kMegabyte, nullptr},
      {L"yes", L"10", 20 * kMegabyte, nullptr},    {L"YES", L"10", 10 * kMegabyte, nullptr},
      {L"YES", L"10", 10 * kMegabyte + 1, L"9"},   {L"YES", L"10", 20 * kMegabyte, L"0"},
      {L"YES", L"4096", 20 * kMegabyte, nullptr},  // wraps to none
  };
  LimitDownload(true, 20);
  for (const auto& each : cases) {
    if (each.on != nullptr) {
      settings_.SetSetting(SettingKey::kDownloadWarnings, each.on);
      settings_.SetSetting(SettingKey::kDownloadWarningMegabytes, each.threshold);
    }
    LogOnAfresh();
    Count(each.received, 0);
    SCOPED_TRACE(each.received);
    ExpectWarning(L"You may only download ", each.left,
                  L" megabytes more before the Internet connection will be disabled.");
  }
}

TEST_F(EnforcementTest, WithoutATotalTheGateClosesByTheLastOneAndTheSessionIsNotLost) {
  LimitTime(true, 1);
  LogOn();
  BreakLog();
  EXPECT_THROW(session_->Reevaluate(), DBerror);
  EXPECT_TRUE(session_->IsOnline());
  Pass(61s);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookBlockLocal, kHookBlock));
  EXPECT_THAT(indicator_.balloons, SizeIs(1));

  // Nobody knows what Anna has used.
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());

  MendLog();
  EXPECT_FALSE(IsOnlineAfterCycle());
  EXPECT_EQ(Rows(L"ConnLog").at(0).at(1), L"61");
}

TEST_F(EnforcementTest, TimeThatCouldNotBeWrittenIsNotGivenAgainAndWrittenLater) {
  LimitTime(true, 1);
  LogOn();
  Pass(30s);
  BreakWritesTo(L"ConnLog");
  EXPECT_THROW(logon_.LogOff(1), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_FALSE(logon_.IsLoggedOn());
  LogOn();
  Pass(31s);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_THROW(logon_.LogOff(1), DBerror);
  logon_.LogOn({});
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THROW(logon_.LogOff(1), DBerror);

  // Though nobody is logged on.
  MendWrites();
  session_->RunEnforcementCycle();
  EXPECT_EQ(Query(L"SELECT SUM(Seconds) FROM ConnLog;").at(0).at(0), L"61");
}

TEST_F(EnforcementTest, SessionsOfLessThanASecondAddUp) {
  LimitTime(true, 1);
  int sessions = 0;
  for (LogOn(); session_->IsOnline() && sessions < 200; logon_.LogOn({}), ++sessions) {
    Pass(999ms);
    logon_.LogOff(1);
  }
  EXPECT_EQ(sessions, 62) << "the first that begins past 61 s is refused";
  EXPECT_EQ(Rows(L"ConnLog").front().at(1), L"0");
  // They belong to their day.
  Pass(24h);
  logon_.LogOn({});
  EXPECT_TRUE(session_->IsOnline());
}

TEST_F(EnforcementTest, TheGateClosesAndTheSessionIsMeasuredBeforeALockedDatabaseIsAsked) {
  settings_.SetSetting(SettingKey::kLocalTrafficAllowed, kYes);
  LimitTime(true, 1);
  LogOn();
  session_->RunEnforcementCycle();
  Pass(61s);
  // The file is in use whenever it is asked, as by another process: the lock is on every lock byte
  // of the write-ahead log's index.
  const std::filesystem::path index = machine_.ProgramFolder() / "quillgate.dat-shm";
  const int otherProcess = ::open(index.c_str(), O_RDWR | O_CLOEXEC);
  struct flock range = {
      .l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = 120, .l_len = 8, .l_pid = 0};
  ASSERT_EQ(::fcntl(otherProcess, F_OFD_SETLK, &range), 0);
  machine_.Time().HoldSleepers();
  std::thread cycle([this] { EXPECT_THROW(session_->RunEnforcementCycle(), DBerror); });
  ASSERT_TRUE(machine_.Time().AwaitSleepers(1));
  // The first cycle has opened the open gate once more.
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookPass, kHookAllowLocal, kHookBlock));
  machine_.Time().Release();
  cycle.join();

  // Totals that are not answered are not 0.
  EXPECT_THROW(logon_.LogOff(1), DBerror);
  EXPECT_THROW(logon_.LogOn({}), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  hook_->ClearCodes();
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_THAT(hook_->Codes(), ElementsAre(kHookAllowLocal, kHookBlock)) << "closed once more";
  ::close(otherProcess);
  session_->RunEnforcementCycle();
  EXPECT_EQ(Rows(L"ConnLog").at(0).at(1), L"61");
}

TEST_F(EnforcementTest, ALogonWhoseTotalsCannotBeReadOpensTheGateOnceTheyCan) {
  logon_.LogOff(1);
  BreakLog();
  EXPECT_THROW(logon_.LogOn({}), DBerror);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  MendLog();
  EXPECT_TRUE(IsOnlineAfterCycle());
}

}  // namespace
}  // namespace quillgate
