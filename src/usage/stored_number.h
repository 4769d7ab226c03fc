// Numbers as the log stores them, which are decimal texts. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillgate {

// Nullopt for a text that is not all decimal digits, or more than 64 bits hold.
std::optional<std::uint64_t> StoredNumber(std::wstring_view text);

// The result of a SUM over such texts. The database returns it in floating-point notation when one
// of the texts is no whole number. 0 for an empty text; what is out of range is bounded.
std::uint64_t StoredSum(std::wstring_view text);

}  // namespace quillgate
