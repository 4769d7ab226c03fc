#include "usage/week_calendar.h"

#include <windows.h>

#include <chrono>
#include <iterator>

namespace quillgate {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr int kMonday = 1;
constexpr int kWednesday = 3;
constexpr int kThursday = 4;
constexpr int kShortYear = 52;
constexpr int kLongYear = 53;

int Leap(int year) {
  return std::chrono::year(year).is_leap() ? 1 : 0;
}

sys_days FirstOfMonth(int year, int month) {
  return std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) / 1;
}

// 0 = Sunday.
int WeekdayOf(sys_days day) {
  return static_cast<int>(std::chrono::weekday(day).c_encoding());
}

int WeeksInYear(int year) {
  const int first = WeekdayOf(FirstOfMonth(year, 1));
  const bool isLong = first == kThursday || (Leap(year) == 1 && first == kWednesday);
  return isLong ? kLongYear : kShortYear;
}

// Maps a day's number in the year to its month and day. January 5th is 1, the December 31st before
// is -4. A row covers the numbers after the previous row's `last` up to and including its own. In
// leap years the flags move `last` up and the day down by one. In the rows of February to November
// the last number is the first of the next month, named as a day 29 to 32 of this one.
struct MonthRow {
  int last;
  bool lastMovesInLeapYears;
  int yearShift;
  int month;
  int dayShift;
  bool dayMovesInLeapYears;
};
constexpr int kFirstValue = -7;
constexpr MonthRow kMonthRows[] = {
    {-4, false, -1, 12, 35, false}, {27, false, 0, 1, 4, false},    {56, true, 0, 2, -27, false},
    {87, true, 0, 3, -55, true},    {117, true, 0, 4, -86, true},   {148, true, 0, 5, -116, true},
    {178, true, 0, 6, -147, true},  {209, true, 0, 7, -177, true},  {240, true, 0, 8, -208, true},
    {270, true, 0, 9, -239, true},  {301, true, 0, 10, -269, true}, {331, true, 0, 11, -300, true},
    {361, true, 0, 12, -330, true}, {365, true, 1, 1, -361, true},
};

int FirstDayOfLocale() {
  wchar_t digit[2] = {};
  const int length = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IFIRSTDAYOFWEEK, digit,
                                      static_cast<int>(std::size(digit)));
  return length == 0 ? kMonday : digit[0] - L'0' + 1;
}

}  // namespace

WeekCalendar::WeekCalendar() : firstDay_(FirstDayOfLocale()) {}

void WeekCalendar::SetFirstDayOfWeek(int day) {
  if (day >= 0 && day <= 6) firstDay_ = day;
}

bool WeekCalendar::GetWeekOfDate(const CalendarDay& date, CalendarWeek* week) const {
  if (week == nullptr) return false;
  const sys_days day = FirstOfMonth(date.year, date.month) + days(date.day - 1);
  const int dayOfYear = static_cast<int>((day - FirstOfMonth(date.year, 1)).count());
  const int shift = firstDay_ - WeekdayOf(day);
  const int count = dayOfYear + shift + (shift <= 0 ? 10 : 3);
  const int rest = count % 7;
  int number = count / 7;
  if (number == 0) {
    // The last week of the year before, with this year. Deliberate, see docs/behaviour.md.
    number = Leap(date.year - 1) + rest >= 6 ? kLongYear : kShortYear;
  } else if (number == kLongYear && rest > Leap(date.year)) {
    number = 1;
  }
  week->week = number;
  week->year = number == 1 && date.month == 12 ? date.year + 1 : date.year;
  return true;
}

bool WeekCalendar::GetFirstDateOfWeek(const CalendarWeek& week, CalendarDay* first) const {
  if (first == nullptr || week.year < 1900) return false;
  if (week.week < 1 || week.week > WeeksInYear(week.year)) return false;
  const int fourth = WeekdayOf(FirstOfMonth(week.year, 1) + days(3));
  const int value = 7 * week.week + firstDay_ - (fourth == 0 ? 7 : fourth) - 7;
  if (value < kFirstValue) return false;
  const int leap = Leap(week.year);
  for (const MonthRow& row : kMonthRows) {
    if (value > row.last + (row.lastMovesInLeapYears ? leap : 0)) continue;
    first->year = week.year + row.yearShift;
    first->month = row.month;
    first->day = value + row.dayShift - (row.dayMovesInLeapYears ? leap : 0);
    return true;
  }
  return false;
}

}  // namespace quillgate
