// Whether and for how long the user who is logged on may be online.
#include "session/access_rules.h"

#include "session_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t kMegabyte = 1'048'576;

class AccessRulesTest : public SessionTest {
 protected:
  AccessReason Check() { return session_->CheckAccess(false); }
};

TEST_F(AccessRulesTest, NobodyIsJudgedAsNobodyWhateverTheHour) {
  EXPECT_EQ(session_->CheckAccess(true), AccessReason::kNobodyLoggedOn);
  EXPECT_EQ(session_->ReasonText(AccessReason::kNobodyLoggedOn), L"");
}

TEST_F(AccessRulesTest, HoursComeBeforeTimeAndTimeBeforeDownload) {
  struct Case {
    bool hourBlocked, timeUsed, downloadUsed;
    AccessReason expected;
  };
  constexpr Case kCases[] = {
      {false, false, false, AccessReason::kAllowed},
      {false, false, true, AccessReason::kDownloadUsedUp},
      {false, true, false, AccessReason::kTimeUsedUp},
      {false, true, true, AccessReason::kTimeUsedUp},
      {true, false, false, AccessReason::kHourBlocked},
      {true, true, true, AccessReason::kHourBlocked},
  };
  for (const bool administrator : {false, true}) {
    for (const Case& each : kCases) {
      Edit([&](User& anna) {
        anna = User(L"Anna");
        anna.AssignAdministrator(administrator);
      });
      LogOnAfresh();
      BlockHour(1 * 24 + 18, each.hourBlocked);
      LimitTime({each.timeUsed, 1, LimitPeriod::kDay});
      LimitDownload({each.downloadUsed, 1, LimitPeriod::kDay});
      Pass(61s);
      Receive(kMegabyte + 1);
      EXPECT_EQ(Check(), each.expected)
          << each.hourBlocked << each.timeUsed << each.downloadUsed << administrator;
    }
  }
}

TEST_F(AccessRulesTest, TheFirstHourOfTheWeekIsSundayMidnight) {
  machine_.Time().SetLocalTime(2005, 3, 13, 0, 30, 0);
  BlockHour(0);
  logon_.LogOn({});
  EXPECT_EQ(Check(), AccessReason::kHourBlocked);
  EXPECT_EQ(session_->ReasonText(Check()), L"You are not allowed to connect at this hour.");
  Pass(30min);
  EXPECT_EQ(Check(), AccessReason::kAllowed);
}

TEST_F(AccessRulesTest, ATimeLimitIsUsedUpOnlyWhenItIsExceeded) {
  LimitTime({true, 60, LimitPeriod::kDay});
  Insert(L"ConnLog", {L"Anna", L"3000", L"0", L"0", L"2005-03-14 08:00:00"});
  Insert(L"ConnLog", {L"Bo", L"9000", L"0", L"0", L"2005-03-14 08:00:00"});
  LogOn();
  Pass(600s);
  EXPECT_EQ(Check(), AccessReason::kAllowed);
  EXPECT_EQ(session_->TimeLeft(), 0u);
  Pass(1s);
  EXPECT_EQ(Check(), AccessReason::kTimeUsedUp);
  EXPECT_EQ(session_->ReasonText(Check()), L"Your connection time limit has been reached.");
}

TEST_F(AccessRulesTest, ADownloadLimitCountsReceivedBytesOnlyAndMustBeExceeded) {
  LimitDownload({true, 10, LimitPeriod::kDay});
  Insert(L"ConnLog", {L"Anna", L"0", L"99999999", L"485760", L"2005-03-14 08:00:00"});
  LogOn();
  machine_.Interfaces().Count(L"eth0", 10'000'000, 99'999'999);
  EXPECT_EQ(Check(), AccessReason::kAllowed);
  Receive(1);
  EXPECT_EQ(Check(), AccessReason::kDownloadUsedUp);
  EXPECT_EQ(session_->ReasonText(Check()), L"Your download limit has been reached.");
}

TEST_F(AccessRulesTest, FourThousandAndNinetySixMegabytesAreNone) {
  LimitDownload({true, 4096, LimitPeriod::kDay});
  LogOn();
  EXPECT_EQ(Check(), AccessReason::kAllowed);
  Receive(1);
  EXPECT_EQ(Check(), AccessReason::kDownloadUsedUp);
}

TEST_F(AccessRulesTest, WhatIsLeftIsToldAlsoForALimitThatIsOff) {
  LimitTime({false, 10, LimitPeriod::kDay});
  LimitDownload({false, 2, LimitPeriod::kDay});
  LogOn();
  Pass(541s);
  Receive(kMegabyte + 1);
  EXPECT_EQ(Check(), AccessReason::kAllowed);
  EXPECT_EQ(session_->TimeLeft(), 59u);
  EXPECT_EQ(session_->BytesLeft(), kMegabyte - 1);
  Pass(60s);
  Receive(kMegabyte);
  EXPECT_EQ(session_->TimeLeft(), 0u);
  EXPECT_EQ(session_->BytesLeft(), 0u);
  EXPECT_EQ(Check(), AccessReason::kAllowed);
}

TEST_F(AccessRulesTest, NothingIsLeftOfUsageThatOverflows32Bits) {
  LimitDownload({true, 10, LimitPeriod::kDay});
  LogOn();
  Receive(0x1'0000'0001);
  EXPECT_EQ(session_->BytesLeft(), 0u);
}

TEST_F(AccessRulesTest, EachPeriodCountsItsOwnDays) {
  // The week begins on Monday the 14th.
  Insert(L"ConnLog", {L"Anna", L"1", L"0", L"10", L"2005-03-15 00:00:00"});
  Insert(L"ConnLog", {L"Anna", L"2", L"0", L"20", L"2005-03-14 23:59:59"});
  Insert(L"ConnLog", {L"Anna", L"4", L"0", L"40", L"2005-03-01 00:00:00"});
  Insert(L"ConnLog", {L"Anna", L"8", L"0", L"80", L"2005-02-28 23:59:59"});
  machine_.Time().SetLocalTime(2005, 3, 15, 12, 0, 0);
  struct Case {
    LimitPeriod period;
    std::uint64_t seconds;
  };
  constexpr Case kCases[] = {
      {LimitPeriod::kDay, 1},
      {LimitPeriod::kUnknown, 1},  // keeps what was known
      {LimitPeriod::kWeek, 3},
      {LimitPeriod::kMonth, 7},
  };
  logon_.LogOn({});
  for (const Case& each : kCases) {
    LimitTime({false, 1, each.period});
    LimitDownload({false, 1, each.period});
    session_->Reevaluate();
    EXPECT_EQ(60 - session_->TimeLeft(), each.seconds);
    EXPECT_EQ(kMegabyte - session_->BytesLeft(), each.seconds * 10);
  }
}

TEST_F(AccessRulesTest, APeriodThatEndsIsNoticedAtTheNextRefreshOnly) {
  LimitTime({true, 10, LimitPeriod::kDay});
  Insert(L"ConnLog", {L"Anna", L"300", L"0", L"0", L"2005-03-14 08:00:00"});
  machine_.Time().SetLocalTime(2005, 3, 14, 23, 59, 50);
  LogOn();
  Pass(20s);
  EXPECT_EQ(session_->TimeLeft(), 600u - 300 - 20);
  session_->CheckAccess(true);
  EXPECT_EQ(session_->TimeLeft(), 600u - 20);
}

TEST_F(AccessRulesTest, ARefreshThatFailsHalfwayChangesNeitherTotal) {
  Insert(L"ConnLog", {L"Anna", L"7", L"0", L"0", L"2005-03-14 08:00:00"});
  LogOn();
  Insert(L"ConnLog", {L"Anna", L"5", L"0", L"0", L"2005-03-14 09:00:00"});
  // The seconds can still be summed up, the bytes cannot.
  database_.DbExecute(L"ALTER TABLE ConnLog RENAME COLUMN BytesRecv TO Gone;");
  EXPECT_THROW(session_->CheckAccess(true), DBerror);
  EXPECT_EQ(session_->TimeLeft(), 60u - 7);
}

}  // namespace
}  // namespace quillgate
