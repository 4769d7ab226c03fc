#include <oleauto.h>

#include <chrono>
#include <cmath>

// Automation dates: whole days since 1899-12-30 and the time of the day as a fraction. The fraction
// counts forward even where the days are negative: -1.25 is six o'clock on 1899-12-29.
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero{std::chrono::year{1899} / 12 / 30};
constexpr long kFirstDay = -657434;  // 0100-01-01
constexpr long kLastDay = 2958465;   // 9999-12-31
constexpr long kSecondsOfDay = 24 * 60 * 60;

bool IsTimeOfDay(const SYSTEMTIME& time) {
  return time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60;
}

void StoreTimeOfDay(long seconds, SYSTEMTIME& time) {
  time.wHour = static_cast<WORD>(seconds / 3600);
  time.wMinute = static_cast<WORD>(seconds / 60 % 60);
  time.wSecond = static_cast<WORD>(seconds % 60);
}

}  // namespace

extern "C" {

int WINAPI SystemTimeToVariantTime(LPSYSTEMTIME time, DATE* date) {
  // Only days are normalized: day 0 is the last day of the month before, and a day up to 31 that
  // the month does not have lies in the month after.
  if (time->wMonth < 1 || time->wMonth > 12 || time->wDay > 31 || !IsTimeOfDay(*time)) return FALSE;
  if (time->wYear < 100 || time->wYear > 9999) return FALSE;
  const sys_days monthStart{std::chrono::year{time->wYear} / time->wMonth / 1};
  const long day = (monthStart + days{time->wDay - 1} - kDayZero).count();
  if (day < kFirstDay || day > kLastDay) return FALSE;
  const long seconds = time->wHour * 3600L + time->wMinute * 60L + time->wSecond;
  const double fraction = static_cast<double>(seconds) / kSecondsOfDay;
  const auto whole = static_cast<double>(day);
  *date = day < 0 ? whole - fraction : whole + fraction;
  return TRUE;
}

int WINAPI VariantTimeToSystemTime(DATE date, LPSYSTEMTIME time) {
  if (!(date > kFirstDay - 1.0 && date < kLastDay + 1.0)) return FALSE;
  const double whole = std::trunc(date);
  auto day = static_cast<long>(whole);
  long seconds = std::lround(std::fabs(date - whole) * kSecondsOfDay);
  if (seconds == kSecondsOfDay) {
    seconds = 0;
    ++day;
  }
  if (day > kLastDay) return FALSE;
  const sys_days instant = kDayZero + days{day};
  const year_month_day calendar{instant};
  *time = {};
  time->wYear = static_cast<WORD>(static_cast<int>(calendar.year()));
  time->wMonth = static_cast<WORD>(static_cast<unsigned>(calendar.month()));
  time->wDay = static_cast<WORD>(static_cast<unsigned>(calendar.day()));
  time->wDayOfWeek = static_cast<WORD>(std::chrono::weekday{instant}.c_encoding());
  StoreTimeOfDay(seconds, *time);
  return TRUE;
}

}  // extern "C"
