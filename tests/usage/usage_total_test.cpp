#include "usage/usage_total.h"

#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"
#include "usage/automation_date.h"

namespace quillgate {
namespace {

class UsageTotalTest : public testing::Test {
 protected:
  void AddSession(const std::wstring& user, const std::wstring& seconds,
                  const std::wstring& start) {
    database_.DbExecute(L"INSERT INTO ConnLog VALUES ('" + user + L"', '" + seconds +
                        L"', '10', '20', '" + start + L"');");
  }

  UsageTotal Total(const std::wstring& user, UsageMeasure measure = UsageMeasure::kSeconds) {
    return UsageTotal(measure, user, database_, calendar_);
  }

  platform::SimulatedMachine machine_;
  Database database_;
  WeekCalendar calendar_;  // from Monday
};

TEST_F(UsageTotalTest, EachMeasureAddsUpItsOwnColumn) {
  AddSession(L"Anna", L"3", L"2005-03-14 10:00:00");
  AddSession(L"Anna", L"4", L"2005-03-14 11:00:00");
  EXPECT_EQ(Total(L"Anna").TodayTotal(), 7u);
  EXPECT_EQ(Total(L"Anna", UsageMeasure::kBytesSent).TodayTotal(), 20u);
  EXPECT_EQ(Total(L"Anna", UsageMeasure::kBytesReceived).TodayTotal(), 40u);
}

TEST_F(UsageTotalTest, AnEmptyNameMeansEverybody) {
  AddSession(L"Anna", L"1", L"2005-03-14 10:00:00");
  AddSession(L"Bo", L"2", L"2005-03-14 11:00:00");
  EXPECT_EQ(Total(L"").TodayTotal(), 3u);
  EXPECT_EQ(Total(L"Bo").TodayTotal(), 2u);
  EXPECT_EQ(Total(L"Carin").TodayTotal(), 0u);
}

TEST_F(UsageTotalTest, ADayIsWholeAndEndsWithItsLastSecond) {
  AddSession(L"Anna", L"1", L"2005-03-13 23:59:59");
  AddSession(L"Anna", L"10", L"2005-03-14 00:00:00");
  AddSession(L"Anna", L"100", L"2005-03-14 23:59:59");
  AddSession(L"Anna", L"1000", L"2005-03-15 00:00:00");
  AddSession(L"Anna", L"10000", L"");
  EXPECT_EQ(Total(L"Anna").TodayTotal(), 110u);
  EXPECT_EQ(Total(L"Anna").Sum(DateOf(2005, 3, 13) + 0.9, DateOf(2005, 3, 14) + 0.1), 111u);
}

TEST_F(UsageTotalTest, AWeekBeginsOnItsFirstDay) {
  machine_.Time().SetLocalTime(2004, 8, 25, 12, 0, 0);
  AddSession(L"Anna", L"1", L"2004-08-22 23:59:59");
  AddSession(L"Anna", L"10", L"2004-08-23 00:00:00");
  AddSession(L"Anna", L"100", L"2004-08-29 23:59:59");
  AddSession(L"Anna", L"1000", L"2004-08-30 00:00:00");
  EXPECT_EQ(Total(L"Anna").WeekTotal(), 110u);
}

TEST_F(UsageTotalTest, AWeekThatHasNoFirstDateAddsUpToNothing) {
  AddSession(L"Anna", L"1", L"2005-01-01 10:00:00");
  AddSession(L"Anna", L"1", L"2013-04-03 10:00:00");
  AddSession(L"Anna", L"1", L"");
  machine_.Time().SetLocalTime(2005, 1, 1, 12, 0, 0);
  EXPECT_EQ(Total(L"Anna").WeekTotal(), 0u);
  machine_.Time().SetLocalTime(2013, 4, 3, 12, 0, 0);  // its first date is named March 32nd
  EXPECT_EQ(Total(L"Anna").WeekTotal(), 0u);
}

TEST_F(UsageTotalTest, AWeekFromTheFirstOfMarchIsCounted) {
  for (const int year : {2004, 2010}) {  // named February 30th and 29th
    const std::wstring march = std::to_wstring(year) + L"-03-0";
    AddSession(L"Anna", L"1", march + L"1 00:00:00");
    AddSession(L"Anna", L"2", march + L"7 23:59:59");
    machine_.Time().SetLocalTime(year, 3, 3, 12, 0, 0);
    EXPECT_EQ(Total(L"Anna").WeekTotal(), 3u) << year;
  }
}

TEST_F(UsageTotalTest, AMonthEndsWithItsOwnLastDay) {
  const std::pair<SYSTEMTIME, std::wstring> cases[] = {
      {{2004, 2, 0, 10, 0, 0, 0, 0}, L"2004-02-29"},
      {{2005, 2, 0, 10, 0, 0, 0, 0}, L"2005-02-28"},
      {{2005, 4, 0, 10, 0, 0, 0, 0}, L"2005-04-30"},
      {{2005, 12, 0, 10, 0, 0, 0, 0}, L"2005-12-31"},
  };
  for (const auto& [now, lastDay] : cases) {
    machine_.Time().SetLocalTime(now.wYear, now.wMonth, now.wDay, 8, 0, 0);
    database_.DbExecute(L"DELETE FROM ConnLog;");
    AddSession(L"Anna", L"1", lastDay.substr(0, 8) + L"01 00:00:00");
    AddSession(L"Anna", L"2", lastDay + L" 23:59:59");
    EXPECT_EQ(Total(L"Anna").MonthTotal(), 3u);
  }
}

TEST_F(UsageTotalTest, TotalsPastThirtyTwoBitsAreExact) {
  AddSession(L"Anna", L"9007199254740993", L"2005-03-14 10:00:00");
  AddSession(L"Anna", L"4294967296", L"2005-03-14 11:00:00");
  EXPECT_EQ(Total(L"Anna").TodayTotal(), 9007203549708289u);
}

TEST_F(UsageTotalTest, ABackwardsIntervalDoesNotAskTheDatabase) {
  database_.DbOpen();
  database_.DbClose();
  EXPECT_EQ(Total(L"Anna").Sum(DateOf(2005, 3, 15), DateOf(2005, 3, 14)), 0u);
  EXPECT_THROW(Total(L"Anna").Sum(DateOf(2005, 3, 14), DateOf(2005, 3, 14)), DBerror);
}

TEST_F(UsageTotalTest, InvalidDatesAddUpToNothing) {
  AddSession(L"Anna", L"1", L"2005-03-14 10:00:00");
  AddSession(L"Anna", L"1", L"");
  EXPECT_EQ(Total(L"").Sum(kInvalidDate, kInvalidDate), 0u);
}

TEST_F(UsageTotalTest, ANameWithAnApostropheIsAnErrorAndNotAnotherQuery) {
  AddSession(L"Anna", L"1", L"2005-03-14 10:00:00");
  EXPECT_THROW(Total(L"' OR User = 'Anna").TodayTotal(), DBerror);
}

}  // namespace
}  // namespace quillgate
