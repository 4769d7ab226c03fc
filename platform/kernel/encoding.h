// Conversions between the wide text of the API and the UTF-8 of Linux. Wide text is UTF-32 here.
// What cannot be converted becomes U+FFFD; nothing throws but for lack of memory.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

std::string Utf8(std::wstring_view wide);
std::wstring Wide(std::string_view utf8);

// One character of UTF-8 text at `at`, which moves past it; U+FFFD, and past one byte, when the
// bytes there are not well formed.
wchar_t DecodeUtf8(std::string_view utf8, std::size_t& at);

// Writes the one to four bytes of a character and returns their number; what is no character is
// U+FFFD.
inline constexpr std::size_t kMaximumUtf8Bytes = 4;
std::size_t EncodeUtf8(wchar_t letter, char* bytes);

// Comparison without regard to case, as names of keys, services, devices, modules and atoms are
// compared.
bool EqualNames(std::wstring_view left, std::wstring_view right);
std::wstring LowerName(std::wstring_view name);

}  // namespace platform
