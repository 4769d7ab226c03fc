#include "usage/week_calendar.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

sys_days SysDays(const CalendarDay& date) {
  return sys_days(std::chrono::year(date.year) / date.month / 1) + days(date.day - 1);
}

class WeekCalendarTest : public testing::Test {
 protected:
  WeekCalendar CalendarFrom(int firstDay) {
    machine_.SetLocale(MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT), firstDay - 1);
    return WeekCalendar();
  }

  platform::SimulatedMachine machine_;
};

TEST_F(WeekCalendarTest, TheWeekBeginsAsInTheLocaleUnlessZeroToSixIsSet) {
  for (int day = 1; day <= 7; ++day)
    EXPECT_EQ(CalendarFrom(day).GetFirstDayOfWeek(), day);  // 7: Sunday
  WeekCalendar calendar;
  for (const int day : {0, 6})
    EXPECT_EQ((calendar.SetFirstDayOfWeek(day), calendar.GetFirstDayOfWeek()), day);
  for (const int day : {-1, 7, 100})
    EXPECT_EQ((calendar.SetFirstDayOfWeek(day), calendar.GetFirstDayOfWeek()), 6);
}

TEST_F(WeekCalendarTest, WeeksFromMondayAreThoseOfIso8601) {
  const WeekCalendar calendar = CalendarFrom(1);
  for (sys_days monday = SysDays({1990, 1, 1}); monday < SysDays({2040, 1, 1}); monday += days(7)) {
    // A week is of the year of its Thursday.
    const std::chrono::year year = year_month_day(monday + days(3)).year();
    const auto before = (monday + days(3) - sys_days(year / 1 / 1)) / days(7);
    const CalendarWeek expected{static_cast<int>(year), static_cast<int>(before) + 1};
    SCOPED_TRACE(std::to_string(expected.year) + " week " + std::to_string(expected.week));
    for (int weekday = 0; weekday < 7; ++weekday) {
      const year_month_day date(monday + days(weekday));
      const CalendarDay fields{int(date.year()), int(unsigned(date.month())),
                               int(unsigned(date.day()))};
      CalendarWeek week{};
      ASSERT_TRUE(calendar.GetWeekOfDate(fields, &week));
      ASSERT_EQ(week.week, expected.week) << fields.month << "-" << fields.day;
      // The first days of January keep their own year, whatever week they fall into.
      ASSERT_EQ(week.year, std::max(expected.year, fields.year)) << fields.month;
    }
    CalendarDay first{};
    ASSERT_TRUE(calendar.GetFirstDateOfWeek(expected, &first));
    ASSERT_EQ(SysDays(first), monday);
    // Only a first of a month may be named as a day of the month before.
    const year_month_day own(monday);
    ASSERT_TRUE(unsigned(first.month) == unsigned(own.month()) || unsigned(own.day()) == 1)
        << first.month << "-" << first.day;
  }
}

TEST_F(WeekCalendarTest, OtherFirstDaysHaveTheirOddities) {
  const struct {
    int firstDay;
    CalendarDay date;
    CalendarWeek week;
    CalendarDay first;  // day 0: refused
  } cases[] = {
      {1, {2004, 8, 25}, {2004, 35}, {2004, 8, 23}},
      {1, {2004, 1, 1}, {2004, 1}, {2003, 12, 29}},
      {1, {2003, 12, 29}, {2004, 1}, {2003, 12, 29}},
      {1, {2004, 12, 31}, {2004, 53}, {2004, 12, 27}},
      {1, {2005, 1, 1}, {2005, 53}, {2005, 0, 0}},
      {1, {2013, 4, 1}, {2013, 14}, {2013, 3, 32}},
      {1, {2004, 3, 1}, {2004, 10}, {2004, 2, 30}},
      {0, {2004, 8, 25}, {2004, 34}, {2004, 8, 15}},
      {7, {2004, 8, 25}, {2004, 34}, {2004, 8, 22}},
      {0, {2003, 8, 27}, {2003, 35}, {2003, 8, 24}},
      {7, {2003, 8, 27}, {2003, 35}, {2003, 8, 31}},
  };
  for (const auto& each : cases) {
    WeekCalendar calendar = CalendarFrom(each.firstDay == 0 ? 7 : each.firstDay);
    calendar.SetFirstDayOfWeek(each.firstDay);  // ignores the 7 that the locale gave
    CalendarWeek week{};
    CalendarDay first{};
    EXPECT_TRUE(calendar.GetWeekOfDate(each.date, &week));
    EXPECT_EQ(std::pair(week.year, week.week), std::pair(each.week.year, each.week.week));
    ASSERT_EQ(calendar.GetFirstDateOfWeek(week, &first), each.first.day != 0);
    if (each.first.day == 0) continue;
    EXPECT_EQ(std::tuple(first.year, first.month, first.day),
              std::tuple(each.first.year, each.first.month, each.first.day))
        << each.firstDay << ": " << each.date.year << "-" << each.date.month;
  }
}

TEST_F(WeekCalendarTest, WeeksThatAYearDoesNotHaveAndMissingOutputsAreRefused) {
  const WeekCalendar calendar = CalendarFrom(1);
  EXPECT_FALSE(calendar.GetWeekOfDate({2005, 3, 14}, nullptr));
  EXPECT_FALSE(calendar.GetFirstDateOfWeek({2005, 11}, nullptr));
  CalendarDay first{};
  for (const CalendarWeek& week : {CalendarWeek{2004, 53}, {2009, 53}, {1900, 1}})
    EXPECT_TRUE(calendar.GetFirstDateOfWeek(week, &first)) << week.year << " " << week.week;
  for (const CalendarWeek& week :
       {CalendarWeek{2005, 53}, {2004, 54}, {2004, 0}, {2004, -1}, {1899, 10}})
    EXPECT_FALSE(calendar.GetFirstDateOfWeek(week, &first)) << week.year << " " << week.week;
}

}  // namespace
}  // namespace quillgate
