// What the command can be told to do. Each prints its outcome and answers the exit status.
#pragma once

#include <windef.h>

#include <string>

namespace platform::winsc {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kBadUsage = 2;
inline constexpr int kNotRunning = 3;  // of Query

int Start(const std::wstring& name);
// Waits until the service has stopped and its process has gone, 60 s at most.
int Stop(const std::wstring& name);
int Query(const std::wstring& name);
int Control(const std::wstring& name, DWORD code);
// Starts every service that is to start with the system. Drivers are left to the services that
// need them: a driver lives in the process that starts it, and this one ends.
int Autostart();

}  // namespace platform::winsc
