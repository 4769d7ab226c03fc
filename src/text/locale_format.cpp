#include "text/locale_format.h"

#include <array>
#include <charconv>

namespace quillgate {
namespace {

constexpr std::size_t kTextLimit = 64;
// The decimal separator and two decimals, which the default number format adds to every number.
constexpr std::size_t kDecimalsLength = 3;

constexpr std::uint64_t kSecondsPerMinute = 60;
constexpr std::uint64_t kMinutesPerHour = 60;
constexpr std::uint64_t kSecondsPerHour = kSecondsPerMinute * kMinutesPerHour;

using TextBuffer = std::array<wchar_t, kTextLimit>;

std::wstring InNumberFormat(const std::wstring& number) {
  TextBuffer buffer{};
  const int length = ::GetNumberFormatW(LOCALE_USER_DEFAULT, 0, number.c_str(), nullptr,
                                        buffer.data(), static_cast<int>(buffer.size()));
  return length == 0 ? std::wstring() : buffer.data();
}

std::wstring TwoDigits(std::uint64_t value) {
  return (value < 10 ? L"0" : L"") + std::to_wstring(value);
}

}  // namespace

std::wstring FormatInteger(std::uint64_t value) {
  std::wstring text = InNumberFormat(std::to_wstring(value));
  text.resize(text.size() < kDecimalsLength ? 0 : text.size() - kDecimalsLength);
  return text;
}

std::wstring FormatDecimal(double value) {
  // Large enough for every double.
  std::array<char, 400> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                          std::chars_format::fixed, 2);
  if (error != std::errc()) return {};
  return InNumberFormat(std::wstring(digits.data(), end));
}

std::wstring FormatDuration(std::uint64_t seconds) {
  return TwoDigits(seconds / kSecondsPerHour) + L":" +
         TwoDigits(seconds / kSecondsPerMinute % kMinutesPerHour) + L":" +
         TwoDigits(seconds % kSecondsPerMinute);
}

std::wstring FormatDate(const SYSTEMTIME& date) {
  TextBuffer buffer{};
  const int length = ::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr,
                                      buffer.data(), static_cast<int>(buffer.size()));
  return length == 0 ? std::wstring() : buffer.data();
}

std::wstring FormatTime(const SYSTEMTIME& time) {
  TextBuffer buffer{};
  const int length = ::GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr,
                                      buffer.data(), static_cast<int>(buffer.size()));
  return length == 0 ? std::wstring() : buffer.data();
}

}  // namespace quillgate
