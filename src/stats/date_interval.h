// The days whose sessions the statistics list: a week, a calendar month, or days of the user's
// choice. Plain values. Any thread.
#pragma once

#include <windows.h>

#include <chrono>

namespace quillgate {

enum class IntervalKind { kWeek, kMonth, kCustom };

// Whole days, both included; `first` is not after `last`.
struct DateInterval {
  std::chrono::sys_days first;
  std::chrono::sys_days last;

  bool operator==(const DateInterval&) const = default;
};

// The week that contains the day. `firstDay` is the day that weeks begin with, 0 = Sunday to 6 =
// Saturday; 7 is Sunday too.
DateInterval WeekOf(std::chrono::sys_days day, int firstDay);

// The calendar month that contains the day.
DateInterval MonthOf(std::chrono::sys_days day);

// The interval before or after this one: the next week or month, or as many days as a custom
// interval has. Unchanged when that would leave the years 1601 to 9999, which a date picker can
// show.
DateInterval Step(const DateInterval& interval, IntervalKind kind, bool forwards);

// Year, month and day only.
std::chrono::sys_days DayOf(const SYSTEMTIME& time);
SYSTEMTIME SystemTimeOf(std::chrono::sys_days day);

}  // namespace quillgate
