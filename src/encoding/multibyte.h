// Conversions between wide text and the process's multibyte code page, in which the engine library
// and the adapter structures carry theirs: UTF-8, which the manifest asks of Windows (from version
// 1903 of Windows 10 on). Characters without a counterpart become the code page's replacement. Any
// thread.
#pragma once

#include <string>
#include <string_view>

namespace quillgate {

std::wstring Widen(std::string_view narrow);
std::string Narrow(std::wstring_view wide);

// Whether every byte is ASCII, which all code pages of Windows have in common: such a text needs no
// table to be converted.
bool IsAscii(std::string_view narrow);

}  // namespace quillgate
