#include "platform/tools/winlogon/winlogon_key.h"

namespace platform::winlogon {

std::wstring ReadText(HKEY key, const wchar_t* name) {
  DWORD type = REG_NONE;
  DWORD bytes = 0;
  if (::RegQueryValueExW(key, name, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS) return {};
  if (type != REG_SZ && type != REG_EXPAND_SZ && type != REG_MULTI_SZ) return {};
  std::wstring text(bytes / sizeof(wchar_t), L'\0');
  if (::RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<LPBYTE>(text.data()),
                         &bytes) != ERROR_SUCCESS) {
    return {};
  }
  text.erase(text.find_last_not_of(L'\0') + 1);
  return text;
}

}  // namespace platform::winlogon
