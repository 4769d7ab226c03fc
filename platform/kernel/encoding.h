// Conversions between the wide text of the API and the UTF-8 of Linux. Wide text is UTF-32 here.
// Invalid input becomes U+FFFD. Throws only std::bad_alloc. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

std::string Utf8(std::wstring_view wide);
std::wstring Wide(std::string_view utf8);

// Decodes one character of UTF-8 text at the offset `at` and advances `at` past it. Malformed bytes
// yield U+FFFD and advance `at` by one byte.
wchar_t DecodeUtf8(std::string_view utf8, std::size_t& at);

// Writes the one to four bytes of a character and returns their number. An invalid character is
// written as U+FFFD.
inline constexpr std::size_t kMaximumUtf8Bytes = 4;
std::size_t EncodeUtf8(wchar_t letter, char* bytes);

// Case-insensitive comparison, for names of keys, services, devices, modules and atoms.
bool EqualNames(std::wstring_view left, std::wstring_view right);
std::wstring LowerName(std::wstring_view name);

}  // namespace platform
