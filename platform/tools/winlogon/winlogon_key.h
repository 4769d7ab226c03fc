// The registry key of the logon process, and the texts that it reads there. Main thread.
#pragma once

#include <windows.h>
#include <winreg.h>

#include <string>

namespace platform::winlogon {

inline constexpr wchar_t kWinlogonKey[] =
    L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";

// The text of a value without its terminating zeros; empty when there is none.
std::wstring ReadText(HKEY key, const wchar_t* name);

}  // namespace platform::winlogon
