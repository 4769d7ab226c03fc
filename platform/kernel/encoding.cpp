#include "platform/kernel/encoding.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>

namespace platform {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;

bool IsScalarValue(std::uint32_t code) {
  return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// A sequence of two to four bytes.
wchar_t DecodeSequence(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : -1;
  static constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  ++at;
  if (extra < 0 || lead > 0xF4 || text.size() - at < static_cast<std::size_t>(extra)) {
    return kReplacement;
  }
  std::uint32_t code = lead & (0x3Fu >> extra);
  for (int i = 0; i < extra; ++i) {
    const auto next = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
    if ((next & 0xC0) != 0x80) return kReplacement;
    code = (code << 6) | (next & 0x3F);
  }
  if (code < kSmallest[extra] || !IsScalarValue(code)) return kReplacement;
  at += static_cast<std::size_t>(extra);
  return static_cast<wchar_t>(code);
}

wchar_t LowerLetter(wchar_t letter) {
  return static_cast<wchar_t>(::u_foldCase(static_cast<UChar32>(letter), U_FOLD_CASE_DEFAULT));
}

}  // namespace

wchar_t DecodeUtf8(std::string_view utf8, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(utf8[at]);
  if (lead >= 0x80) return DecodeSequence(utf8, at);
  ++at;
  return static_cast<wchar_t>(lead);
}

std::size_t EncodeUtf8(wchar_t letter, char* bytes) {
  const auto given = static_cast<std::uint32_t>(letter);
  const std::uint32_t code = IsScalarValue(given) ? given : std::uint32_t{kReplacement};
  if (code < 0x80) {
    bytes[0] = static_cast<char>(code);
    return 1;
  }
  const std::size_t extra = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
  bytes[0] = static_cast<char>(kLeads[extra] | (code >> (6 * extra)));
  for (std::size_t i = 1; i <= extra; ++i)
    bytes[i] = static_cast<char>(0x80 | ((code >> (6 * (extra - i))) & 0x3F));
  return extra + 1;
}

std::string Utf8(std::wstring_view wide) {
  std::string out;
  out.reserve(wide.size());
  char bytes[kMaximumUtf8Bytes];
  for (const wchar_t letter : wide)
    out.append(bytes, EncodeUtf8(letter, bytes));
  return out;
}

std::wstring Wide(std::string_view utf8) {
  std::wstring out;
  out.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();)
    out += DecodeUtf8(utf8, at);
  return out;
}

bool EqualNames(std::wstring_view left, std::wstring_view right) {
  return std::ranges::equal(left, right, {}, LowerLetter, LowerLetter);
}

std::wstring LowerName(std::wstring_view name) {
  std::wstring lower(name);
  std::ranges::transform(lower, lower.begin(), LowerLetter);
  return lower;
}

}  // namespace platform
