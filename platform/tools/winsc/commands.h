// The subcommands of winsc. Each prints its outcome and returns the exit status. Main thread.
#pragma once

#include <windef.h>

#include <string>

namespace platform::winsc {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kBadUsage = 2;
inline constexpr int kNotRunning = 3;  // of Query

int Start(const std::wstring& name);
// Waits until the service has stopped and its process has exited, 60 s at most.
int Stop(const std::wstring& name);
int Query(const std::wstring& name);
int Control(const std::wstring& name, DWORD code);
// Has what the system keeps of the service written anew, as after an update of the software. The
// service need not be stopped.
int Refresh(const std::wstring& name);
// Removes the service from the system, once it has stopped.
int Delete(const std::wstring& name);
// Starts every service with an automatic start type. Drivers are left to the services that need
// them: a driver is loaded in the process that starts it, and this process exits.
int Autostart();

}  // namespace platform::winsc
