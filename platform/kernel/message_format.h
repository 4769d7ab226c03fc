// The escapes and inserts of a message text, as FormatMessage documents them. Pure; any thread.
#pragma once

#include <windef.h>

#include <cstdarg>
#include <string>
#include <string_view>

namespace platform {

// Formats the text. "%n" and every line break become CR LF, "%0" ends the text, "%1" to "%99"
// insert an argument: a wide string, or a 32-bit number when "!u!", "!lu!", "!d!" or "!ld!"
// follows. Arguments are read from the list in the order of their numbers, once each however often
// the text uses them. NO_ERROR; else ERROR_INVALID_PARAMETER when an insert has no argument list or
// an unsupported format, or is used both as a number and as a string.
DWORD FormatMessageText(std::wstring_view text, va_list* arguments, std::wstring& formatted);

}  // namespace platform
