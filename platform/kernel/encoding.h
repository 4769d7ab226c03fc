// Conversions between the wide text of the API and the UTF-8 of Linux. Wide text is UTF-32 here.
// What cannot be converted becomes U+FFFD; nothing throws but for lack of memory.
#pragma once

#include <string>
#include <string_view>

namespace platform {

std::string Utf8(std::wstring_view wide);
std::wstring Wide(std::string_view utf8);

// Comparison without regard to the case of ASCII letters, as names of keys, services, devices and
// modules are compared.
bool EqualNames(std::wstring_view left, std::wstring_view right);
std::wstring LowerName(std::wstring_view name);

}  // namespace platform
