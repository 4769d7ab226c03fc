#include "package_key.h"

#include <windows.h>
#include <winreg.h>

namespace quillgate::notifier {
namespace {

constexpr wchar_t kPackageKey[] =
    L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify\\qgwlnp";

bool SetText(HKEY key, const wchar_t* name, const std::wstring& text) {
  return ::RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

bool SetNumber(HKEY key, const wchar_t* name, DWORD number) {
  return ::RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                          sizeof number) == ERROR_SUCCESS;
}

// Events are handled one after the other: a logoff must not overtake the logon before it.
bool SetValues(HKEY key, const std::wstring& folder) {
  return SetText(key, L"DllName", folder + L"qgwlnp.dll") &&
         SetText(key, L"Startup", L"WLEventStartup") && SetText(key, L"Logon", L"WLEventLogon") &&
         SetText(key, L"Logoff", L"WLEventLogoff") && SetNumber(key, L"Asynchronous", 0) &&
         SetNumber(key, L"Impersonate", 0);
}

}  // namespace

bool RegisterPackage(const std::wstring& folder) {
  HKEY key = nullptr;
  if (::RegCreateKeyExW(HKEY_LOCAL_MACHINE, kPackageKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const bool isSet = SetValues(key, folder);
  ::RegCloseKey(key);
  return isSet;
}

bool UnregisterPackage() {
  const LSTATUS result = ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, kPackageKey);
  return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
}

}  // namespace quillgate::notifier
