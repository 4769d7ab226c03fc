// What the finished sessions of one user add up to in one measure: today, this week, this month or
// between two days. Holds no numbers: every call asks the database and may throw DBerror. The
// session in progress is not in it.
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

class UsageTotal {
 public:
  // An empty user name means all users.
  UsageTotal(UsageMeasure measure, std::wstring user, Database& database,
             const WeekCalendar& calendar);

  // From the start of the first day to the end of the last; 0 if they are the wrong way round, and
  // then the database is not asked.
  std::uint64_t Sum(DATE from, DATE to) const;

  // By the local time of the call; a period ends with its last day also when that is yet to come.
  std::uint64_t TodayTotal() const;
  std::uint64_t WeekTotal() const;
  std::uint64_t MonthTotal() const;

 private:
  UsageMeasure measure_;
  std::wstring user_;
  Database& database_;
  const WeekCalendar& calendar_;
};

}  // namespace quillgate
