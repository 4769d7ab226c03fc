#include "usage/automation_date.h"

#include <array>
#include <cwchar>

namespace quillgate {
namespace {

// Formats the fields of a valid date by a printf pattern.
std::wstring FormatFields(DATE date, const wchar_t* pattern) {
  SYSTEMTIME fields{};
  if (::VariantTimeToSystemTime(date, &fields) == FALSE) return {};
  std::array<wchar_t, 32> text;
  const int length = std::swprintf(text.data(), text.size(), pattern, fields.wYear, fields.wMonth,
                                   fields.wDay, fields.wHour, fields.wMinute, fields.wSecond);
  return length < 0 ? std::wstring() : std::wstring(text.data(), static_cast<std::size_t>(length));
}

}  // namespace

DATE LocalNow() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  DATE date = kInvalidDate;
  return ::SystemTimeToVariantTime(&now, &date) != FALSE ? date : kInvalidDate;
}

DATE DateOf(int year, int month, int day) {
  SYSTEMTIME midnight{};
  midnight.wYear = static_cast<WORD>(year);
  midnight.wMonth = static_cast<WORD>(month);
  midnight.wDay = static_cast<WORD>(day);
  DATE date = kInvalidDate;
  return ::SystemTimeToVariantTime(&midnight, &date) != FALSE ? date : kInvalidDate;
}

std::wstring FormatTimestamp(DATE date) {
  return FormatFields(date, L"%04d-%02d-%02d %02d:%02d:%02d");
}

std::wstring FormatDay(DATE date) {
  return FormatFields(date, L"%04d-%02d-%02d");
}

}  // namespace quillgate
