// The range of numbers that a field accepts, whole and without a sign, and the parsing of such a
// number. Pure functions.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillgate {

struct NumberRange {
  std::uint32_t lowest;
  std::uint32_t highest;

  constexpr bool Contains(std::uint32_t number) const {
    return number >= lowest && number <= highest;
  }
};

// Parses the leading digits of the text, after any blanks. 0 for an empty text and for one that
// begins with another character. A number that does not fit 32 bits yields the largest 32-bit
// number.
std::uint32_t ParseNumber(std::wstring_view text);

}  // namespace quillgate
