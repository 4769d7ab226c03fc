// The words of a command of the layer, its name first. Any thread.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

namespace platform {

inline std::vector<std::wstring> CommandWords() {
  int count = 0;
  LPWSTR* split = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::wstring> words(split, split + (split == nullptr ? 0 : count));
  ::LocalFree(split);
  return words;
}

}  // namespace platform
