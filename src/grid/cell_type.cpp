#include <algorithm>

#include "grid/cell_store.h"

namespace quillgate {
namespace {

constexpr wchar_t UpperCased(wchar_t character) {
  return character >= L'a' && character <= L'z' ? static_cast<wchar_t>(character - L'a' + L'A')
                                                : character;
}

bool EqualsIgnoringCase(std::wstring_view text, std::wstring_view upperCased) {
  return std::equal(text.begin(), text.end(), upperCased.begin(), upperCased.end(),
                    [](wchar_t left, wchar_t right) { return UpperCased(left) == right; });
}

constexpr bool IsWithin(wchar_t character, wchar_t first, wchar_t last) {
  return character >= first && character <= last;
}

// Independent of the system and the locale. Beyond Latin-1, every character outside of the blocks
// of symbols, from punctuation (U+2000) to arrows (U+2BFF), counts as a letter.
bool IsLetter(wchar_t character) {
  if (character < 0x80) return IsWithin(UpperCased(character), L'A', L'Z');
  if (character < 0x100)
    return (character >= 0xC0 && character != 0xD7 && character != 0xF7) || character == 0xAA ||
           character == 0xB5 || character == 0xBA;
  return !IsWithin(character, 0x2000, 0x2BFF);
}

bool IsSign(wchar_t character) {
  return character == L'+' || character == L'-';
}

bool IsNumber(std::wstring_view text) {
  const auto isExcluded = [](wchar_t character) {
    return character == L' ' || IsLetter(character);
  };
  if (std::any_of(text.begin(), text.end(), isExcluded)) return false;
  if (!text.empty() && std::any_of(text.begin() + 1, text.end(), IsSign)) return false;
  if (std::count(text.begin(), text.end(), L'.') > 1) return false;
  return std::any_of(text.begin(), text.end(),
                     [](wchar_t character) { return IsWithin(character, L'0', L'9'); });
}

}  // namespace

CellType TypeOf(std::wstring_view text) {
  if (EqualsIgnoringCase(text, L"TRUE")) return CellType::kTrue;
  if (EqualsIgnoringCase(text, L"FALSE")) return CellType::kFalse;
  if (text.starts_with(L'~')) return CellType::kGraphic;
  return IsNumber(text) ? CellType::kNumber : CellType::kText;
}

}  // namespace quillgate
