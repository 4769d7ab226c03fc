#include <windows.h>

#include <unicode/udat.h>
#include <unicode/unum.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "platform/kernel/api_result.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// No formatted date, time or number of documented length is longer.
constexpr std::int32_t kTextLimit = 512;
using IcuText = std::array<char16_t, kTextLimit>;

constexpr int kDecimals = 2;
constexpr std::int32_t kUtcLength = 3;
constexpr const char16_t* kUtc = u"UTC";
constexpr char16_t kNarrowSpace = u'\u202F';

template <auto kClose>
struct CloseWith {
  template <class Formatter>
  void operator()(Formatter* format) const {
    kClose(format);
  }
};
using NumberFormatter = std::unique_ptr<UNumberFormat, CloseWith<unum_close>>;
using DateFormatter = std::unique_ptr<UDateFormat, CloseWith<udat_close>>;

// The formatter of the latest locale: opening one takes a hundred times as long as formatting. One
// for each thread and kind, since threads must not share them.
template <class Formatter>
class LastFormatter {
 public:
  // Null when there is none for the locale.
  template <class Open>
  auto* For(const std::string& locale, const Open& open) {
    if (formatter_ == nullptr || locale != locale_) formatter_ = open(locale);
    locale_ = locale;
    return formatter_.get();
  }

 private:
  std::string locale_;
  Formatter formatter_;
};

std::optional<std::wstring> Widen(const IcuText& text, std::int32_t length, UErrorCode error) {
  if (U_FAILURE(error) || length > kTextLimit) return std::nullopt;
  std::wstring wide(text.begin(), text.begin() + length);
  // Windows separates the parts of a time with a plain space.
  std::ranges::replace(wide, static_cast<wchar_t>(kNarrowSpace), L' ');
  return wide;
}

// The documented form: digits, at most one decimal point and a minus sign in front.
std::optional<std::string> NumberText(std::wstring_view value) {
  std::string text;
  for (const wchar_t each : value) {
    const bool isDigit = each >= L'0' && each <= L'9';
    const bool isSign = each == L'-' && text.empty();
    const bool isPoint = each == L'.' && text.find('.') == std::string::npos;
    if (!isDigit && !isSign && !isPoint) return std::nullopt;
    text += static_cast<char>(each);
  }
  if (text.find_first_of("0123456789") == std::string::npos) return std::nullopt;
  return text;
}

NumberFormatter OpenNumberFormat(const std::string& locale) {
  UErrorCode error = U_ZERO_ERROR;
  NumberFormatter format(unum_open(UNUM_DECIMAL, nullptr, 0, locale.c_str(), nullptr, &error));
  if (U_FAILURE(error)) return nullptr;
  unum_setAttribute(format.get(), UNUM_FRACTION_DIGITS, kDecimals);
  unum_setAttribute(format.get(), UNUM_ROUNDING_MODE, UNUM_ROUND_HALFUP);
  unum_setAttribute(format.get(), UNUM_MINIMUM_GROUPING_DIGITS, 1);
  unum_setSymbol(format.get(), UNUM_MINUS_SIGN_SYMBOL, u"-", 1, &error);
  return format;
}

std::optional<std::wstring> FormattedNumber(LCID locale, LPCWSTR value) {
  const std::string name = FormatLocale(locale, "LC_NUMERIC");
  const std::optional<std::string> number = NumberText(value);
  if (name.empty() || !number) return std::nullopt;
  thread_local LastFormatter<NumberFormatter> last;
  const UNumberFormat* format = last.For(name, OpenNumberFormat);
  if (format == nullptr) return std::nullopt;
  IcuText text{};
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length =
      unum_formatDecimal(format, number->data(), static_cast<std::int32_t>(number->size()),
                         text.data(), kTextLimit, nullptr, &error);
  return Widen(text, length, error);
}

// Nothing for a date that Windows does not format.
std::optional<std::chrono::sys_days> DayOf(const SYSTEMTIME& time) {
  using namespace std::chrono;
  const year_month_day day = year(time.wYear) / month(time.wMonth) / std::chrono::day(time.wDay);
  if (!day.ok() || time.wYear < 1601) return std::nullopt;
  return sys_days(day);
}

std::optional<std::chrono::seconds> TimeOfDay(const SYSTEMTIME& time) {
  using namespace std::chrono;
  const bool isTime =
      time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wMilliseconds < 1000;
  if (!isTime) return std::nullopt;
  return hours(time.wHour) + minutes(time.wMinute) + seconds(time.wSecond);
}

DateFormatter OpenFormat(const std::string& locale, UDateFormatStyle time, UDateFormatStyle date) {
  UErrorCode error = U_ZERO_ERROR;
  DateFormatter format(udat_open(time, date, locale.c_str(), kUtc, kUtcLength, nullptr, 0, &error));
  return U_SUCCESS(error) ? std::move(format) : nullptr;
}

// Windows writes the year of a short date with four digits.
void UseFullYears(UDateFormat* format) {
  IcuText text{};
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = udat_toPattern(format, 0, text.data(), kTextLimit, &error);
  if (U_FAILURE(error)) return;
  std::u16string pattern(text.data(), static_cast<std::size_t>(length));
  const std::size_t year = pattern.find(u"yy");
  if (year == std::u16string::npos || pattern.find(u"yyy") != std::u16string::npos) return;
  pattern.insert(year, u"yy");
  udat_applyPattern(format, 0, pattern.data(), static_cast<std::int32_t>(pattern.size()));
}

DateFormatter OpenDateFormat(const std::string& locale) {
  DateFormatter format = OpenFormat(locale, UDAT_NONE, UDAT_SHORT);
  if (format != nullptr) UseFullYears(format.get());
  return format;
}

std::optional<std::wstring> FormattedMoment(const UDateFormat* format,
                                            std::chrono::sys_seconds moment) {
  if (format == nullptr) return std::nullopt;
  const std::chrono::milliseconds sinceEpoch = moment.time_since_epoch();
  IcuText text{};
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t length = udat_format(format, static_cast<UDate>(sinceEpoch.count()),
                                          text.data(), kTextLimit, nullptr, &error);
  return Widen(text, length, error);
}

std::optional<std::wstring> FormattedDate(LCID locale, const SYSTEMTIME& date) {
  const std::string name = FormatLocale(locale, "LC_TIME");
  const auto day = DayOf(date);
  if (name.empty() || !day) return std::nullopt;
  thread_local LastFormatter<DateFormatter> last;
  return FormattedMoment(last.For(name, OpenDateFormat), *day);
}

// Opens the formatter of times of day in one of the styles.
template <UDateFormatStyle kStyle>
const UDateFormat* TimeFormat(const std::string& locale) {
  thread_local LastFormatter<DateFormatter> last;
  return last.For(locale,
                  [](const std::string& name) { return OpenFormat(name, kStyle, UDAT_NONE); });
}

std::optional<std::wstring> FormattedTime(LCID locale, DWORD flags, const SYSTEMTIME& time) {
  const std::string name = FormatLocale(locale, "LC_TIME");
  const auto sinceMidnight = TimeOfDay(time);
  if (name.empty() || !sinceMidnight) return std::nullopt;
  const UDateFormat* format =
      (flags & TIME_NOSECONDS) != 0 ? TimeFormat<UDAT_SHORT>(name) : TimeFormat<UDAT_MEDIUM>(name);
  return FormattedMoment(format, std::chrono::sys_seconds(*sinceMidnight));
}

SYSTEMTIME MomentOrNow(const SYSTEMTIME* moment) {
  if (moment != nullptr) return *moment;
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return now;
}

bool IsSupported(const char* function, DWORD flags, DWORD supported, bool ownFormat) {
  if (!ownFormat && (flags & ~supported) == 0) return true;
  LogLine(std::string(function) + ": unsupported flags or a format of the caller's");
  ::SetLastError(ERROR_INVALID_FLAGS);
  return false;
}

bool IsBuffer(LPCWSTR buffer, int characters) {
  if (characters == 0 || (characters > 0 && buffer != nullptr)) return true;
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return false;
}

}  // namespace
}  // namespace platform

using namespace platform;

extern "C" {

int WINAPI GetNumberFormatW(LCID locale, DWORD flags, LPCWSTR value, const NUMBERFMTW* format,
                            LPWSTR text, int characters) try {
  if (!IsBuffer(text, characters)) return 0;
  if (!IsSupported("GetNumberFormatW", flags, 0, format != nullptr)) return 0;
  return GiveLocaleText(value == nullptr ? std::nullopt : FormattedNumber(locale, value), text,
                        characters);
} catch (...) {
  return FailedCall(0);
}

int WINAPI GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR format,
                          LPWSTR text, int characters) try {
  if (!IsBuffer(text, characters)) return 0;
  if (!IsSupported("GetDateFormatW", flags, DATE_SHORTDATE, format != nullptr)) return 0;
  return GiveLocaleText(FormattedDate(locale, MomentOrNow(date)), text, characters);
} catch (...) {
  return FailedCall(0);
}

int WINAPI GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR format,
                          LPWSTR text, int characters) try {
  if (!IsBuffer(text, characters)) return 0;
  if (!IsSupported("GetTimeFormatW", flags, TIME_NOSECONDS, format != nullptr)) return 0;
  return GiveLocaleText(FormattedTime(locale, flags, MomentOrNow(time)), text, characters);
} catch (...) {
  return FailedCall(0);
}

}  // extern "C"
