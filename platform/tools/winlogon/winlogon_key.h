// The registry key of the logon process, and what it reads there. Main thread.
#pragma once

#include <windows.h>
#include <winreg.h>

#include <string>

namespace platform::winlogon {

inline constexpr wchar_t kWinlogonKey[] =
    L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";

// An open key, closed at the end. Null when there is no such key; reading it fails then.
class RegistryKey {
 public:
  RegistryKey(HKEY above, const std::wstring& path) {
    if (::RegOpenKeyExW(above, path.c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~RegistryKey() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

// The text of a value without its terminating zeros; empty when there is none.
std::wstring ReadText(HKEY key, const wchar_t* name);

}  // namespace platform::winlogon
