// Conversions between wide text and narrow text in the process's ANSI code page (CP_ACP). The
// engine library and the adapter structures use narrow text. The manifest sets the code page to
// UTF-8 (Windows 10 version 1903 and later). A character that the code page lacks is converted to
// the code page's replacement character. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillgate {

std::wstring Widen(std::string_view narrow);
std::string Narrow(std::wstring_view wide);

// Whether every byte is ASCII. ASCII is the same in all Windows code pages, so such a text can be
// converted without a table.
bool IsAscii(std::string_view narrow);

}  // namespace quillgate
