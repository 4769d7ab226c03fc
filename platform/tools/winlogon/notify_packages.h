// The logon notification packages: libraries that are registered under the Notify key, with the
// names of their functions for the events. Main thread.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace platform::winlogon {

enum class LogonEvent { kStartup, kLogon, kLogoff };

class NotifyPackages {
 public:
  NotifyPackages() = default;
  NotifyPackages(const NotifyPackages&) = delete;
  NotifyPackages& operator=(const NotifyPackages&) = delete;

  // Calls the function of every package for the event, one after the other, and returns when the
  // last one has returned. The key is read each time; a library that was loaded stays so. What
  // cannot be loaded or called is logged and left out.
  void Notify(LogonEvent event, const std::wstring& user);

 private:
  void NotifyOne(HKEY package, LogonEvent event, std::wstring user);
  HMODULE Load(const std::wstring& file);

  std::map<std::wstring, HMODULE> loaded_;  // by file
};

}  // namespace platform::winlogon
