#include "usage/stored_number.h"

#include <charconv>
#include <limits>

#include "encoding/multibyte.h"

namespace quillgate {
namespace {

constexpr std::uint64_t kMaximum = std::numeric_limits<std::uint64_t>::max();

}  // namespace

std::optional<std::uint64_t> StoredNumber(std::wstring_view text) {
  if (text.empty()) return {};
  std::uint64_t number = 0;
  for (const wchar_t each : text) {
    if (each < L'0' || each > L'9') return {};
    const auto digit = static_cast<std::uint64_t>(each - L'0');
    if (number > (kMaximum - digit) / 10) return {};
    number = number * 10 + digit;
  }
  return number;
}

std::uint64_t StoredSum(std::wstring_view text) {
  if (const auto number = StoredNumber(text)) return *number;
  const std::string narrow = Narrow(text);
  double sum = 0;
  std::from_chars(narrow.data(), narrow.data() + narrow.size(), sum);
  if (!(sum > 0)) return 0;
  return sum < 0x1p64 ? static_cast<std::uint64_t>(sum) : kMaximum;
}

}  // namespace quillgate
