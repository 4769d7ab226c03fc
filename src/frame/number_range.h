// The numbers that a field takes, whole and without a sign, and how one is read from a text. Pure.
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

// The number that the text's digits make, blanks before them passed over; 0 for an empty text and
// for one that begins otherwise. One that 32 bits cannot hold is the largest that they can.
std::uint32_t ParseNumber(std::wstring_view text);

}  // namespace quillgate
