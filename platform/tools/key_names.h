// The names of the keys below an open registry key. Any thread.
#pragma once

#include <windows.h>

#include <iterator>
#include <string>
#include <vector>

namespace platform {

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
