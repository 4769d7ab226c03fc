// The names under which the service is registered, and the controls of its own that it accepts.
#pragma once

#include <windows.h>

namespace quillgate {

inline constexpr wchar_t kServiceName[] = L"qgserv";
inline constexpr wchar_t kServiceDisplayName[] = L"Quillgate";

// Held by every process of this program for as long as it runs.
inline constexpr wchar_t kRunningMutexName[] = L"Global\\QuillgateServiceRunning";

// Sent by other programs when a user has logged on to Windows, and when that user is logging off.
inline constexpr DWORD kControlWindowsLogon = 128;
inline constexpr DWORD kControlWindowsLogoff = 129;

}  // namespace quillgate
