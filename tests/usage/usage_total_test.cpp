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

TEST_F(UsageTotalTest, EachMeasureAddsUpItsColumnOfOneUserOrOfEverybodyExactly) {
  AddSession(L"Anna", L"9007199254740993", L"2005-03-14 10:00:00");
  AddSession(L"Anna", L"4294967296", L"2005-03-14 11:00:00");
  AddSession(L"Bo", L"2", L"2005-03-14 11:00:00");
  EXPECT_EQ(Total(L"Anna").TodayTotal(), 9007203549708289u);
  EXPECT_EQ(Total(L"").TodayTotal(), 9007203549708291u);
  EXPECT_EQ(Total(L"Carin").TodayTotal(), 0u);
  EXPECT_EQ(Total(L"Anna", UsageMeasure::kBytesSent).TodayTotal(), 20u);
  EXPECT_EQ(Total(L"Anna", UsageMeasure::kBytesReceived).TodayTotal(), 40u);
}

TEST_F(UsageTotalTest, APeriodIsFromTheBeginningOfItsFirstDayToTheLastSecondOfItsLast) {
  using Period = std::uint64_t (UsageTotal::*)() const;
  constexpr Period kDay = &UsageTotal::TodayTotal;
  constexpr Period kWeek = &UsageTotal::WeekTotal;
  constexpr Period kMonth = &UsageTotal::MonthTotal;
  const struct {
    Period total;
    int year, month, day;
    const wchar_t *before, *first, *last, *after;
  } cases[] = {
      {kDay, 2005, 3, 14, L"2005-03-13", L"2005-03-14", L"2005-03-14", L"2005-03-15"},
      {kWeek, 2004, 8, 25, L"2004-08-22", L"2004-08-23", L"2004-08-29", L"2004-08-30"},
      // Its first date is named February 30th, the next one's February 29th.
      {kWeek, 2004, 3, 3, L"2004-02-29", L"2004-03-01", L"2004-03-07", L"2004-03-08"},
      {kWeek, 2010, 3, 3, L"2010-02-28", L"2010-03-01", L"2010-03-07", L"2010-03-08"},
      {kMonth, 2004, 2, 10, L"2004-01-31", L"2004-02-01", L"2004-02-29", L"2004-03-01"},
      {kMonth, 2005, 2, 10, L"2005-01-31", L"2005-02-01", L"2005-02-28", L"2005-03-01"},
      {kMonth, 2005, 4, 10, L"2005-03-31", L"2005-04-01", L"2005-04-30", L"2005-05-01"},
      {kMonth, 2005, 12, 10, L"2005-11-30", L"2005-12-01", L"2005-12-31", L"2006-01-01"},
  };
  for (const auto& each : cases) {
    machine_.Time().SetLocalTime(each.year, each.month, each.day, 12, 0, 0);
    database_.DbExecute(L"DELETE FROM ConnLog;");
    AddSession(L"Anna", L"1", each.before + std::wstring(L" 23:59:59"));
    AddSession(L"Anna", L"10", each.first + std::wstring(L" 00:00:00"));
    AddSession(L"Anna", L"100", each.last + std::wstring(L" 23:59:59"));
    AddSession(L"Anna", L"1000", each.after + std::wstring(L" 00:00:00"));
    AddSession(L"Anna", L"10000", L"");
    EXPECT_EQ((Total(L"Anna").*each.total)(), 110u) << each.first;
  }
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

TEST_F(UsageTotalTest, AnIntervalIsOfWholeDaysAndOnlyABackwardsOneDoesNotAskTheDatabase) {
  AddSession(L"Anna", L"1", L"2005-03-13 00:00:00");
  AddSession(L"Anna", L"10", L"2005-03-14 23:59:59");
  AddSession(L"Anna", L"100", L"");
  EXPECT_EQ(Total(L"Anna").Sum(DateOf(2005, 3, 13) + 0.9, DateOf(2005, 3, 14) + 0.1), 11u);
  EXPECT_EQ(Total(L"").Sum(kInvalidDate, kInvalidDate), 0u);
  EXPECT_THROW(Total(L"' OR User = 'Anna").TodayTotal(), DBerror) << "another query";
  database_.DbClose();
  EXPECT_EQ(Total(L"Anna").Sum(DateOf(2005, 3, 15), DateOf(2005, 3, 14)), 0u);
  EXPECT_THROW(Total(L"Anna").Sum(DateOf(2005, 3, 14), DateOf(2005, 3, 14)), DBerror);
}

}  // namespace
}  // namespace quillgate
