#include "usage/usage_total.h"

#include <chrono>
#include <cmath>

#include "usage/automation_date.h"
#include "usage/stored_number.h"

namespace quillgate {
namespace {

// Days from the start of a week to the last second of its seventh day.
constexpr double kWeekSpan = 6.999988425925926;

SYSTEMTIME LocalTime() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return now;
}

int DaysInMonth(int year, int month) {
  using namespace std::chrono;
  const year_month_day_last last = std::chrono::year(year) /
                                   std::chrono::month(static_cast<unsigned>(month)) /
                                   std::chrono::last;
  return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace

std::wstring_view ColumnOf(UsageMeasure measure) {
  switch (measure) {
    case UsageMeasure::kSeconds:
      return L"Seconds";
    case UsageMeasure::kBytesReceived:
      return L"BytesRecv";
    case UsageMeasure::kBytesSent:
      return L"BytesSent";
  }
  return {};
}

UsageTotal::UsageTotal(UsageMeasure measure, std::wstring user, Database& database,
                       const WeekCalendar& calendar)
    : measure_(measure), user_(std::move(user)), database_(database), calendar_(calendar) {}

std::uint64_t UsageTotal::Sum(DATE from, DATE to) const {
  const DATE fromDay = std::trunc(from);
  const DATE toDay = std::trunc(to);
  if (fromDay > toDay) return 0;
  std::wstring sql = L"SELECT SUM(";
  sql.append(ColumnOf(measure_)).append(L") FROM ConnLog WHERE StartDate >= '");
  sql.append(FormatDay(fromDay)).append(L" 00:00:00' AND StartDate <= '");
  sql.append(FormatDay(toDay)).append(L" 23:59:59'");
  if (!user_.empty()) sql.append(L" AND User = ").append(SqlText(user_));
  DbRows rows;
  if (!database_.Run(sql.append(L";"), rows)) throw BusyError();
  return rows.empty() ? 0 : StoredSum(rows.front().front());
}

DayRange Today() {
  const SYSTEMTIME now = LocalTime();
  const DATE today = DateOf(now.wYear, now.wMonth, now.wDay);
  return {today, today};
}

DayRange ThisWeek(const WeekCalendar& calendar) {
  const SYSTEMTIME now = LocalTime();
  CalendarWeek week{};
  CalendarDay first{};
  if (!calendar.GetWeekOfDate({now.wYear, now.wMonth, now.wDay}, &week)) return {};
  if (!calendar.GetFirstDateOfWeek(week, &first)) return {};
  const DATE start = DateOf(first.year, first.month, first.day);
  return {start, start == kInvalidDate ? kInvalidDate : std::trunc(start + kWeekSpan)};
}

DayRange ThisMonth() {
  const SYSTEMTIME now = LocalTime();
  return {DateOf(now.wYear, now.wMonth, 1),
          DateOf(now.wYear, now.wMonth, DaysInMonth(now.wYear, now.wMonth))};
}

}  // namespace quillgate
