// The enforcement cycle, the decisions at logon and log-off, and what becomes of both when the
// database fails.
#include <thread>

#include "session_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Balloon = RecordingIndicator::Balloon;

constexpr std::uint64_t kMegabyte = 1'048'576;

class EnforcementTest : public SessionTest {
 protected:
  void LimitMinutes(std::int32_t minutes) { LimitTime({true, minutes, LimitPeriod::kDay}); }
};

TEST_F(EnforcementTest, ALogonThatIsAllowedStartsASessionWithoutABalloon) {
  session_->Disable();
  hook_->ClearCodes();
  ASSERT_TRUE(logon_.LogOn({}));
  EXPECT_THAT(hook_->Codes(), ElementsAre(kEnableCode));
  EXPECT_THAT(indicator_.balloons, IsEmpty());
}

TEST_F(EnforcementTest, ALogonAtABlockedHourClosesTheGateAndSaysWhy) {
  BlockHour(1 * 24 + 18);
  logon_.LogOn({});
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(
      indicator_.balloons,
      ElementsAre(Balloon{L"Internet connection disabled",
                          L"You are not allowed to connect at this hour.", BalloonIcon::kError}));
}

TEST_F(EnforcementTest, ReevaluatingNobodyClosesTheGateSilently) {
  session_->Reevaluate();
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(indicator_.balloons, IsEmpty());
}

TEST_F(EnforcementTest, ALimitThatIsReachedWritesTheSessionClosesTheGateAndSaysWhy) {
  LimitMinutes(60);
  LogOn();
  Pass(3601s);
  machine_.Interfaces().Count(L"eth0", 65536, 1000);
  session_->RunEnforcementCycle();

  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(hook_->Codes(), ElementsAre(kBlockLocalCode, kDisableCode));
  EXPECT_THAT(
      indicator_.balloons,
      ElementsAre(Balloon{L"Internet connection disabled",
                          L"Your connection time limit has been reached.", BalloonIcon::kError}));
  EXPECT_THAT(Rows(L"ConnLog"),
              ElementsAre(DbRow{L"Anna", L"3601", L"1000", L"65536", L"2005-03-14 18:05:09"}));
  EXPECT_THAT(Rows(L"CrashLog"),
              ElementsAre(DbRow{L"Anna", L"0", L"0", L"0", L"2005-03-14 18:05:09"}));

  // The written session counts, so the gate stays closed; and silently.
  indicator_.balloons.clear();
  session_->RunEnforcementCycle();
  session_->RunEnforcementCycle();
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(indicator_.balloons, IsEmpty());
  EXPECT_THAT(Rows(L"ConnLog"), SizeIs(1));
}

TEST_F(EnforcementTest, TheEndOfAnAllowedHourClosesAndTheNextOneOpensWithABalloon) {
  BlockHour(1 * 24 + 19);
  LogOn();
  session_->RunEnforcementCycle();
  EXPECT_TRUE(session_->IsOnline());
  Pass(55min);
  session_->RunEnforcementCycle();
  EXPECT_FALSE(session_->IsOnline());
  Pass(1h);
  indicator_.balloons.clear();
  session_->RunEnforcementCycle();
  EXPECT_TRUE(session_->IsOnline());
  EXPECT_EQ(session_->SecondsOnline(), 0u) << "a new session";
  EXPECT_THAT(indicator_.balloons, ElementsAre(Balloon{L"Quillgate", L"Internet connection enabled",
                                                       BalloonIcon::kInformation}));
}

TEST_F(EnforcementTest, AReplacedLimitIsJudgedByTheNextCycleAlsoIfItIsOfAnotherPeriod) {
  Insert(L"ConnLog", {L"Anna", L"7200", L"0", L"0", L"2005-03-01 08:00:00"});
  LogOn();
  Pass(61s);
  const struct {
    User::Limit limit;
    bool online;
  } cases[] = {{{true, 1, LimitPeriod::kDay}, false},
               {{true, 60, LimitPeriod::kDay}, true},
               {{true, 60, LimitPeriod::kMonth}, false},
               {{true, 180, LimitPeriod::kMonth}, true}};
  for (const auto& each : cases) {
    LimitTime(each.limit);
    session_->RunEnforcementCycle();
    EXPECT_EQ(session_->IsOnline(), each.online) << each.limit.amount;
  }
  // Totals of the other period that cannot be read keep no gate open.
  BreakLog();
  LimitTime({true, 180, LimitPeriod::kDay});
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_TRUE(session_->IsOnline()) << "judged by the last ones";
  BlockHour(1 * 24 + 18);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
}

TEST_F(EnforcementTest, AUserIsNeverJudgedHalfReplaced) {
  LimitTime({false, 0, LimitPeriod::kDay});
  LogOn();
  Pass(1s);
  std::thread page([this] {
    for (int i = 0; i < 2000; ++i)
      LimitTime({i % 2 == 0, i % 2 == 0 ? 60 : 0, LimitPeriod::kDay});
  });
  for (int i = 0; i < 50; ++i) {
    session_->RunEnforcementCycle();
    EXPECT_EQ(session_->CheckAccess(false), AccessReason::kAllowed);
  }
  page.join();
  EXPECT_TRUE(session_->IsOnline());
}

TEST_F(EnforcementTest, AnOpenGateWithoutAUserIsClosedWithAnEmptyText) {
  session_->RunEnforcementCycle();
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(indicator_.balloons,
              ElementsAre(Balloon{L"Internet connection disabled", L"", BalloonIcon::kError}));
  EXPECT_THAT(Rows(L"ConnLog"), IsEmpty());
  EXPECT_THAT(Rows(L"CrashLog"), IsEmpty());
}

TEST_F(EnforcementTest, TheCycleMirrorsTheRunningSession) {
  LogOn();
  Pass(20s);
  session_->RunEnforcementCycle();
  Pass(20s);
  Receive(5);
  session_->RunEnforcementCycle();
  EXPECT_THAT(Rows(L"CrashLog"),
              ElementsAre(DbRow{L"Anna", L"40", L"0", L"5", L"2005-03-14 18:05:09"}));
}

TEST_F(EnforcementTest, LoggingOffWritesTheSessionEmptiesTheMirrorAndClosesWithoutABalloon) {
  LogOn();
  Pass(20s);
  session_->RunEnforcementCycle();
  Pass(3s);
  logon_.LogOff(1);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(Rows(L"ConnLog"),
              ElementsAre(DbRow{L"Anna", L"23", L"0", L"0", L"2005-03-14 18:05:09"}));
  EXPECT_THAT(Rows(L"CrashLog"), IsEmpty());
  EXPECT_THAT(indicator_.balloons, IsEmpty());
}

TEST_F(EnforcementTest, LoggingNobodyOffWritesNothingButEmptiesTheMirrorAndCloses) {
  Insert(L"CrashLog", {L"Bo", L"1", L"1", L"1", L""});
  logon_.LogOff(1);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(Rows(L"ConnLog"), IsEmpty());
  EXPECT_THAT(Rows(L"CrashLog"), IsEmpty());
}

// A cycle may run when the session has been ended and the user is not yet logged off.
TEST_F(EnforcementTest, ACycleInTheMiddleOfALogOffDoesNotOpenTheGateAgain) {
  LogOn();
  session_->EndSession();
  session_->RunEnforcementCycle();
  EXPECT_FALSE(session_->IsOnline());
  session_->Reevaluate();
  EXPECT_TRUE(session_->IsOnline());
}

TEST_F(EnforcementTest, TheTimeWarningRoundsUpAndComesOnceInASession) {
  struct Case {
    int secondsLeft;
    const wchar_t* minutes;  // null: no warning
  };
  constexpr Case kCases[] = {{600, nullptr}, {599, L"10"}, {60, L"2"}, {59, L"1"}, {0, L"1"}};
  LimitMinutes(60);
  for (const Case& each : kCases) {
    LogOnAfresh();
    Pass(std::chrono::seconds(3600 - each.secondsLeft));
    session_->RunEnforcementCycle();
    session_->RunEnforcementCycle();
    if (each.minutes == nullptr) {
      EXPECT_THAT(indicator_.balloons, IsEmpty());
      continue;
    }
    EXPECT_THAT(indicator_.balloons,
                ElementsAre(Balloon{L"Quillgate - Warning!",
                                    L"You have less than " + std::wstring(each.minutes) +
                                        L" minutes left before the Internet connection will be "
                                        L"disabled.",
                                    BalloonIcon::kWarning}));
  }
}

TEST_F(EnforcementTest, TimeWarningsObeyTheirSettings) {
  struct Case {
    const wchar_t* on;
    const wchar_t* minutes;
    bool limited;
    std::size_t balloons;
  };
  constexpr Case kCases[] = {
      {L"YES", L"59", true, 0}, {L"YES", L"60", true, 1}, {L"Yes", L"60", true, 0},
      {L"YES", L"0", true, 0},  {L"YES", L"x", true, 0},  {L"YES", L"60", false, 0},
  };
  for (const Case& each : kCases) {
    LimitTime({each.limited, 60, LimitPeriod::kDay});
    settings_.SetSetting(SettingKey::kTimeWarnings, each.on);
    settings_.SetSetting(SettingKey::kTimeWarningMinutes, each.minutes);
    LogOnAfresh();
    Pass(1s);
    session_->RunEnforcementCycle();
    EXPECT_EQ(indicator_.balloons.size(), each.balloons) << each.on << each.minutes;
  }
}

TEST_F(EnforcementTest, DownloadWarningsObeyTheirSettingsAndTruncate) {
  struct Case {
    const wchar_t* on;
    const wchar_t* megabytes;
    std::uint64_t received;
    const wchar_t* left;  // null: no warning
  };
  constexpr Case kCases[] = {
      {nullptr, nullptr, 20 * kMegabyte, nullptr}, {L"YES", L"0", 20 * kMegabyte, nullptr},
      {L"yes", L"10", 20 * kMegabyte, nullptr},    {L"YES", L"10", 10 * kMegabyte, nullptr},
      {L"YES", L"10", 10 * kMegabyte + 1, L"9"},   {L"YES", L"10", 20 * kMegabyte, L"0"},
      {L"YES", L"4096", 20 * kMegabyte, nullptr},  // wraps to none
  };
  LimitDownload({true, 20, LimitPeriod::kDay});
  for (const Case& each : kCases) {
    if (each.on != nullptr) {
      settings_.SetSetting(SettingKey::kDownloadWarnings, each.on);
      settings_.SetSetting(SettingKey::kDownloadWarningMegabytes, each.megabytes);
    }
    LogOnAfresh();
    Receive(each.received);
    session_->RunEnforcementCycle();
    session_->RunEnforcementCycle();
    if (each.left == nullptr) {
      EXPECT_THAT(indicator_.balloons, IsEmpty());
      continue;
    }
    EXPECT_THAT(
        indicator_.balloons,
        ElementsAre(Balloon{L"Quillgate - Warning!",
                            L"You may only download " + std::wstring(each.left) +
                                L" megabytes more before the Internet connection will be disabled.",
                            BalloonIcon::kWarning}));
  }
}

TEST_F(EnforcementTest, AWarningIsGivenAgainAfterTheUsersWereReevaluated) {
  LimitMinutes(1);
  LogOn();
  session_->RunEnforcementCycle();
  session_->Reevaluate();
  session_->RunEnforcementCycle();
  EXPECT_THAT(indicator_.balloons, SizeIs(2));
}

TEST_F(EnforcementTest, ALimitClosesTheGateAlsoWhenTheDatabaseFailsAndTheSessionIsNotLost) {
  LimitMinutes(1);
  LogOn();
  session_->RunEnforcementCycle();
  Pass(61s);
  indicator_.balloons.clear();
  BreakLog();
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THAT(hook_->Codes(), ElementsAre(kBlockLocalCode, kDisableCode));
  EXPECT_THAT(indicator_.balloons, SizeIs(1));

  // Without its totals nobody knows what Anna has used.
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());

  MendLog();
  session_->RunEnforcementCycle();
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_EQ(Rows(L"ConnLog").at(0).at(1), L"61");
}

TEST_F(EnforcementTest, TimeThatCouldNotBeWrittenIsNotGivenAgain) {
  LimitMinutes(1);
  LogOn();
  Pass(61s);
  BreakWritesTo(L"ConnLog");
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THROW(logon_.LogOff(1), DBerror);
  logon_.LogOn({});
  EXPECT_FALSE(session_->IsOnline());

  MendWrites();
  session_->RunEnforcementCycle();
  EXPECT_EQ(Rows(L"ConnLog").at(0).at(1), L"61");
}

TEST_F(EnforcementTest, SessionsOfLessThanASecondAddUp) {
  LimitMinutes(1);
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
  LimitMinutes(1);
  LogOn();
  session_->RunEnforcementCycle();
  Pass(61s);
  LockDatabase();
  machine_.Time().HoldSleepers();
  std::thread cycle([this] { EXPECT_THROW(session_->RunEnforcementCycle(), DBerror); });
  ASSERT_TRUE(machine_.Time().AwaitSleepers(1));
  EXPECT_THAT(hook_->Codes(), ElementsAre(kAllowLocalCode, kDisableCode));
  machine_.Time().Release();
  cycle.join();

  // Totals that are not answered are not 0.
  EXPECT_THROW(logon_.LogOff(1), DBerror);
  EXPECT_THROW(logon_.LogOn({}), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  hook_->ClearCodes();
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_THAT(hook_->Codes(), ElementsAre(kAllowLocalCode, kDisableCode)) << "closed once more";
  UnlockDatabase();
  session_->RunEnforcementCycle();
  EXPECT_EQ(Rows(L"ConnLog").at(0).at(1), L"61");
}

TEST_F(EnforcementTest, ALogOffClosesTheGateAlsoWhenTheDatabaseFails) {
  LogOn();
  Pass(5s);
  BreakWritesTo(L"ConnLog");
  EXPECT_THROW(logon_.LogOff(1), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_FALSE(logon_.IsLoggedOn());

  // The session is written as soon as that is possible, though nobody is logged on.
  MendWrites();
  session_->RunEnforcementCycle();
  EXPECT_EQ(Rows(L"ConnLog").at(0).at(1), L"5");
}

TEST_F(EnforcementTest, ALogonWhoseTotalsCannotBeReadOpensTheGateOnceTheyCan) {
  logon_.LogOff(1);
  BreakLog();
  EXPECT_THROW(logon_.LogOn({}), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
  MendLog();
  session_->RunEnforcementCycle();
  EXPECT_TRUE(session_->IsOnline());
}

TEST_F(EnforcementTest, AnOpenGateIsJudgedByTheLastTotalsWhenNewOnesCannotBeRead) {
  LimitMinutes(1);
  LogOn();
  BreakLog();
  EXPECT_THROW(session_->Reevaluate(), DBerror);
  Pass(61s);
  EXPECT_THROW(session_->RunEnforcementCycle(), DBerror);
  EXPECT_FALSE(session_->IsOnline());
}

}  // namespace
}  // namespace quillgate
