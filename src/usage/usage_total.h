// The total of the finished sessions of one user in one measure: today, this week, this month or
// between two days. Nothing is cached: every call queries the database and may throw DBerror. The
// running session is not included.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <string>

#include "storage/database.h"
#include "usage/week_calendar.h"

namespace quillgate {

enum class UsageMeasure { kSeconds, kBytesReceived, kBytesSent };

// The column of ConnLog that holds the measure: "Seconds", "BytesRecv" or "BytesSent".
std::wstring_view ColumnOf(UsageMeasure measure);

// Whole days, both included; empty when `first` is after `last`.
struct DayRange {
  DATE first = 0;
  DATE last = -1;
};

// The current periods, by the local time of the call. A period extends to its last day, also when
// that is in the future. ThisWeek is empty when the calendar fails.
DayRange Today();
DayRange ThisWeek(const WeekCalendar& calendar);
DayRange ThisMonth();

class UsageTotal {
 public:
  // An empty user name means all users.
  UsageTotal(UsageMeasure measure, std::wstring user, Database& database,
             const WeekCalendar& calendar);

  // From the start of the first day to the end of the last; 0 without a query when `from` is after
  // `to`. Throws DBerror when the database stays busy, since the total is then unknown.
  std::uint64_t Sum(DATE from, DATE to) const;
  std::uint64_t Sum(const DayRange& days) const { return Sum(days.first, days.last); }

  std::uint64_t TodayTotal() const { return Sum(Today()); }
  std::uint64_t WeekTotal() const { return Sum(ThisWeek(calendar_)); }
  std::uint64_t MonthTotal() const { return Sum(ThisMonth()); }

 private:
  UsageMeasure measure_;
  std::wstring user_;
  Database& database_;
  const WeekCalendar& calendar_;
};

}  // namespace quillgate
