#include "accounts/windows_availability.h"

#include <windows.h>
#include <winreg.h>

#include "handles/handle.h"

namespace quillgate {
namespace {

constexpr wchar_t kPackageKey[] =
    L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify\\qgwlnp";
constexpr wchar_t kPackageFile[] = L"qgwlnp.dll";

// Without a package that has ever run there is no table to read from.
std::wstring ReportedUser(WindowsIdentity& identity) {
  try {
    return identity.UserName();
  } catch (const std::exception&) {
    return {};
  }
}

bool IsPackageRegistered() {
  HKEY key = nullptr;
  const bool isOpen =
      ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kPackageKey, 0, KEY_READ, &key) == ERROR_SUCCESS;
  const RegistryKey owned(isOpen ? key : nullptr);
  return isOpen;
}

bool IsPackageInstalled() {
  return ModuleHandle(::LoadLibraryW(kPackageFile)).IsValid();
}

}  // namespace

MessageId WindowsLogonHint(WindowsIdentity& identity) {
  if (!HasWindowsLogonPackage()) return kMsgComponentMissing;
  return ReportedUser(identity).empty() ? kMsgRebootNeeded : 0;
}

bool HasWindowsLogonPackage() {
  return IsPackageRegistered() && IsPackageInstalled();
}

}  // namespace quillgate
