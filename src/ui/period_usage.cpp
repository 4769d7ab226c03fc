#include "ui/period_usage.h"

#include "usage/usage_total.h"

namespace quillgate {

UsageOverview ReadUsageOverview(const std::wstring& user, Database& database,
                                const WeekCalendar& calendar) {
  const UsageTotal seconds(UsageMeasure::kSeconds, user, database, calendar);
  const UsageTotal received(UsageMeasure::kBytesReceived, user, database, calendar);
  const UsageTotal sent(UsageMeasure::kBytesSent, user, database, calendar);
  return {{seconds.TodayTotal(), received.TodayTotal(), sent.TodayTotal()},
          {seconds.WeekTotal(), received.WeekTotal(), sent.WeekTotal()},
          {seconds.MonthTotal(), received.MonthTotal(), sent.MonthTotal()}};
}

}  // namespace quillgate
