// What the package reports to the system's event log, and the texts that it is made of. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillgate::notifier {

// Writes a warning under the package's name. Failures are ignored.
void LogEvent(const std::wstring& text) noexcept;

// Texts of the engine are UTF-8 on both systems, whatever the process's own code page is.
std::wstring Widen(std::string_view narrow);
std::string Narrow(std::wstring_view wide);

}  // namespace quillgate::notifier
