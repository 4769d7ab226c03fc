#include "platform/tools/winlogon/notify_packages.h"

#include <winreg.h>
#include <winwlx.h>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/tools/command_key.h"
#include "platform/tools/winlogon/winlogon_key.h"

namespace platform::winlogon {
namespace {

using NotifyFunction = void(WINAPI*)(PWLX_NOTIFICATION_INFO info);

const wchar_t* ValueOf(LogonEvent event) {
  constexpr const wchar_t* kValues[] = {L"Startup", L"Logon", L"Logoff"};
  return kValues[static_cast<std::size_t>(event)];
}

}  // namespace

void NotifyPackages::Notify(LogonEvent event, const std::wstring& user) {
  const RegistryKey packages(HKEY_LOCAL_MACHINE, std::wstring(kWinlogonKey) + L"\\Notify");
  for (const std::wstring& name : NamesBelow(packages.Get())) {
    try {
      const RegistryKey package(packages.Get(), name);
      NotifyOne(package.Get(), event, user);
    } catch (...) {
      LogLine("logon notification: an exception left " + Utf8(name));
    }
  }
}

void NotifyPackages::NotifyOne(HKEY package, LogonEvent event, std::wstring user) {
  const std::wstring name = ReadText(package, ValueOf(event));
  if (name.empty()) return;
  const std::wstring file = ReadText(package, L"DllName");
  const HMODULE library = Load(file);
  const auto function =
      reinterpret_cast<NotifyFunction>(::GetProcAddress(library, Utf8(name).c_str()));
  if (function == nullptr) {
    LogLine("logon notification: " + Utf8(file) + " cannot be loaded or has no " + Utf8(name));
    return;
  }
  wchar_t domain[] = L"";
  wchar_t station[] = L"WinSta0";
  WLX_NOTIFICATION_INFO info{};
  info.Size = sizeof info;
  info.UserName = user.data();
  info.Domain = domain;
  info.WindowStation = station;
  function(&info);
}

HMODULE NotifyPackages::Load(const std::wstring& file) {
  HMODULE& library = loaded_[file];
  if (library == nullptr) library = ::LoadLibraryW(file.c_str());
  return library;
}

}  // namespace platform::winlogon
