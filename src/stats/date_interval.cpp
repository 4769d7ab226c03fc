#include "stats/date_interval.h"

namespace quillgate {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr days kWeek{7};
// From one end of a month to a day in the month beside it.
constexpr days kIntoNextMonth{32};
constexpr sys_days kEarliest = std::chrono::year(1601) / 1 / 1;
constexpr sys_days kLatest = std::chrono::year(9999) / 12 / 31;

DateInterval Shifted(const DateInterval& interval, days by) {
  return {interval.first + by, interval.last + by};
}

DateInterval Beside(const DateInterval& interval, IntervalKind kind, bool forwards) {
  switch (kind) {
    case IntervalKind::kWeek:
      return Shifted(interval, forwards ? kWeek : -kWeek);
    case IntervalKind::kMonth:
      return MonthOf(forwards ? interval.first + kIntoNextMonth : interval.last - kIntoNextMonth);
    case IntervalKind::kCustom:
      break;
  }
  const days length = interval.last - interval.first + days(1);
  return Shifted(interval, forwards ? length : -length);
}

}  // namespace

DateInterval WeekOf(sys_days day, int firstDay) {
  const int weekday = static_cast<int>(std::chrono::weekday(day).c_encoding());
  const sys_days first = day - days((weekday - firstDay + 7) % 7);
  return {first, first + kWeek - days(1)};
}

DateInterval MonthOf(sys_days day) {
  const year_month_day date(day);
  const auto month = date.year() / date.month();
  return {month / 1, month / std::chrono::last};
}

DateInterval Step(const DateInterval& interval, IntervalKind kind, bool forwards) {
  const DateInterval beside = Beside(interval, kind, forwards);
  return beside.first < kEarliest || beside.last > kLatest ? interval : beside;
}

sys_days DayOf(const SYSTEMTIME& time) {
  return std::chrono::year(time.wYear) / time.wMonth / time.wDay;
}

SYSTEMTIME SystemTimeOf(sys_days day) {
  const year_month_day date(day);
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(static_cast<int>(date.year()));
  time.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
  time.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
  time.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding());
  return time;
}

}  // namespace quillgate
