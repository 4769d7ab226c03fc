// A registry key that a command reads, and the names of the keys below it. Any thread.
#pragma once

#include <windows.h>
#include <winreg.h>

#include <iterator>
#include <string>
#include <vector>

namespace platform {

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

// In the registry's order. A key cannot have a longer name than 255 characters.
inline std::vector<std::wstring> NamesBelow(HKEY key) {
  std::vector<std::wstring> names;
  wchar_t name[256] = {};
  DWORD characters = std::size(name);
  for (DWORD index = 0; ::RegEnumKeyExW(key, index, name, &characters, nullptr, nullptr, nullptr,
                                        nullptr) == ERROR_SUCCESS;
       ++index) {
    names.emplace_back(name, characters);
    characters = std::size(name);
  }
  return names;
}

}  // namespace platform
