// The usage of a user in the periods that the connection sheet shows. Reads the database, which may
// throw DBerror.
#pragma once

#include <cstdint>
#include <string>

#include "storage/database.h"
#include "usage/week_calendar.h"

namespace quillgate {

// Finished sessions only.
struct PeriodUsage {
  std::uint64_t seconds = 0;
  std::uint64_t bytesReceived = 0;
  std::uint64_t bytesSent = 0;
};

struct UsageOverview {
  PeriodUsage today;
  PeriodUsage week;
  PeriodUsage month;
};

UsageOverview ReadUsageOverview(const std::wstring& user, Database& database,
                                const WeekCalendar& calendar);

}  // namespace quillgate
