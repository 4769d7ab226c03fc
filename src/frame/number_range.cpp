#include "frame/number_range.h"

#include <limits>

namespace quillgate {

std::uint32_t ParseNumber(std::wstring_view text) {
  constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();
  const std::size_t first = text.find_first_not_of(L' ');
  if (first == std::wstring_view::npos) return 0;
  std::uint64_t number = 0;
  for (const wchar_t each : text.substr(first)) {
    if (each < L'0' || each > L'9') break;
    number = number * 10 + static_cast<std::uint64_t>(each - L'0');
    if (number > kLargest) return kLargest;
  }
  return static_cast<std::uint32_t>(number);
}

}  // namespace quillgate
