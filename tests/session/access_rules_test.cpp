// Whether and for how long the user who is logged on may be online.
#include "session/access_rules.h"

#include "session_test.h"

namespace quillgate {
namespace {

using namespace std::chrono_literals;

using AccessRulesTest = SessionTest;

TEST_F(AccessRulesTest, HoursComeBeforeTimeAndTimeBeforeDownload) {
  const struct {
    bool hourBlocked, timeUsed, downloadUsed;
    AccessReason expected;
    const wchar_t* text;
  } cases[] = {
      {false, false, false, AccessReason::kAllowed, L""},
      {false, false, true, AccessReason::kDownloadUsedUp, L"Your download limit has been reached."},
      {false, true, true, AccessReason::kTimeUsedUp,
       L"Your connection time limit has been reached."},
      {true, true, true, AccessReason::kHourBlocked,
       L"You are not allowed to connect at this hour."},
  };
  EXPECT_EQ(session_->CheckAccess(true), AccessReason::kNobodyLoggedOn);
  EXPECT_EQ(session_->ReasonText(AccessReason::kNobodyLoggedOn), L"");
  for (const bool administrator : {false, true}) {
    Edit([&](User& anna) { anna = administrator ? Administrator(L"Anna") : User(L"Anna"); });
    LogOnAfresh();
    Pass(61s);
    Count(kMegabyte + 1, 0);
    for (const auto& each : cases) {
      BlockHour(kThisHour, each.hourBlocked);
      LimitTime(each.timeUsed, 1);
      LimitDownload(each.downloadUsed, 1);
      EXPECT_EQ(session_->CheckAccess(false), each.expected) << each.text << administrator;
      EXPECT_EQ(session_->ReasonText(session_->CheckAccess(false)), each.text);
    }
  }
}

TEST_F(AccessRulesTest, ALimitOfOnesOwnTimeAndDownloadsMustBeExceeded) {
  LimitTime(true, 60);
  LimitDownload(true, 10);
  Insert(L"ConnLog", {L"Anna", L"3000", L"99999999", L"485760", L"2005-03-14 08:00:00"});
  Insert(L"ConnLog", {L"Bo", L"9000", L"0", L"99999999", L"2005-03-14 08:00:00"});
  LogOn();
  Pass(600s);
  Count(10'000'000, 99'999'999);
  EXPECT_EQ(session_->CheckAccess(false), AccessReason::kAllowed);
  EXPECT_EQ(session_->TimeLeft(), 0u);
  Count(1, 0);
  EXPECT_EQ(session_->CheckAccess(false), AccessReason::kDownloadUsedUp);
  Pass(1s);
  EXPECT_EQ(session_->CheckAccess(false), AccessReason::kTimeUsedUp);
}

TEST_F(AccessRulesTest, ALimitOf4096MegabytesIsNoneAndUsagePast32BitsIsNotCut) {
  LimitDownload(true, 4096);
  LogOn();
  EXPECT_EQ(session_->CheckAccess(false), AccessReason::kAllowed);
  Count(1, 0);
  EXPECT_EQ(session_->CheckAccess(false), AccessReason::kDownloadUsedUp);
  LimitDownload(true, 10);
  Count(0x1'0000'0000, 0);
  EXPECT_EQ(session_->BytesLeft(), 0u);
}

TEST_F(AccessRulesTest, WhatIsLeftIsNotifiedAlsoForALimitThatIsOff) {
  LimitTime(false, 10);
  LimitDownload(false, 2);
  LogOn();
  Pass(541s);
  Count(kMegabyte + 1, 0);
  EXPECT_EQ(session_->TimeLeft(), 59u);
  EXPECT_EQ(session_->BytesLeft(), kMegabyte - 1);
  Pass(60s);
  Count(kMegabyte, 0);
  EXPECT_EQ(session_->TimeLeft(), 0u);
  EXPECT_EQ(session_->BytesLeft(), 0u);
  EXPECT_EQ(session_->CheckAccess(false), AccessReason::kAllowed);
}

TEST_F(AccessRulesTest, EachPeriodCountsItsOwnDays) {
  // The week begins on Monday the 14th.
  Insert(L"ConnLog", {L"Anna", L"1", L"0", L"10", L"2005-03-15 00:00:00"});
  Insert(L"ConnLog", {L"Anna", L"2", L"0", L"20", L"2005-03-14 23:59:59"});
  Insert(L"ConnLog", {L"Anna", L"4", L"0", L"40", L"2005-03-01 00:00:00"});
  Insert(L"ConnLog", {L"Anna", L"8", L"0", L"80", L"2005-02-28 23:59:59"});
  machine_.Time().SetLocalTime(2005, 3, 15, 12, 0, 0);
  constexpr std::pair<LimitPeriod, std::uint64_t> kSeconds[] = {
      {LimitPeriod::kDay, 1},
      {LimitPeriod::kUnknown, 1},  // keeps what was known
      {LimitPeriod::kWeek, 3},
      {LimitPeriod::kMonth, 7},
  };
  logon_.LogOn({});
  for (const auto& [period, seconds] : kSeconds) {
    LimitTime(false, 1, period);
    LimitDownload(false, 1, period);
    session_->Reevaluate();
    EXPECT_EQ(60 - session_->TimeLeft(), seconds);
    EXPECT_EQ(kMegabyte - session_->BytesLeft(), seconds * 10);
  }
}

TEST_F(AccessRulesTest, ThePeriodThatEndedIsLeftAtARefreshThatSucceedsWhole) {
  LimitTime(true, 10);
  Insert(L"ConnLog", {L"Anna", L"300", L"0", L"0", L"2005-03-14 08:00:00"});
  machine_.Time().SetLocalTime(2005, 3, 14, 23, 59, 50);
  LogOn();
  Pass(20s);
  EXPECT_EQ(session_->TimeLeft(), 600u - 300 - 20);
  // The seconds can still be summed up, the bytes cannot.
  database_.DbExecute(L"ALTER TABLE ConnLog RENAME COLUMN BytesRecv TO Gone;");
  EXPECT_THROW(session_->CheckAccess(true), DBerror);
  EXPECT_EQ(session_->TimeLeft(), 600u - 300 - 20);
  database_.DbExecute(L"ALTER TABLE ConnLog RENAME COLUMN Gone TO BytesRecv;");
  session_->CheckAccess(true);
  EXPECT_EQ(session_->TimeLeft(), 600u - 20);
}

}  // namespace
}  // namespace quillgate
