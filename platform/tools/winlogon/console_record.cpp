#include "platform/tools/winlogon/console_record.h"

#include <fstream>
#include <vector>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/tools/command_key.h"
#include "platform/tools/winlogon/winlogon_key.h"

namespace platform::winlogon {
namespace {

constexpr wchar_t kValue[] = L"ConsoleUser";
constexpr wchar_t kTold[] = L"told";

std::vector<std::wstring> Split(const std::wstring& strings) {
  std::vector<std::wstring> parts(1);
  for (const wchar_t letter : strings) {
    if (letter == L'\0') {
      parts.emplace_back();
    } else {
      parts.back() += letter;
    }
  }
  return parts;
}

}  // namespace

// One value, so that it is replaced as a whole: the run of the machine, whether the packages were
// told, and the session with its user when there is one.
std::optional<ConsoleUser> ConsoleRecord::Read() const {
  const RegistryKey key(HKEY_LOCAL_MACHINE, kWinlogonKey);
  const std::vector<std::wstring> parts = Split(ReadText(key.Get(), kValue));
  if (parts.size() < 2 || parts[0] != bootId_) return std::nullopt;
  ConsoleUser user;
  user.isTold = parts[1] == kTold;
  if (parts.size() < 4) return user;
  user.sessionId = parts[2];
  user.name = parts[3];
  return user;
}

void ConsoleRecord::Write(const ConsoleUser& user) const {
  std::wstring strings = bootId_ + L'\0' + (user.isTold ? kTold : L"telling") + L'\0';
  if (!user.sessionId.empty()) strings += user.sessionId + L'\0' + user.name + L'\0';
  strings += L'\0';
  HKEY key = nullptr;
  LSTATUS result = ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, kWinlogonKey, 0, nullptr,
                                     REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key, nullptr);
  if (result == ERROR_SUCCESS) {
    result = ::RegSetValueExW(key, kValue, 0, REG_MULTI_SZ,
                              reinterpret_cast<const BYTE*>(strings.data()),
                              static_cast<DWORD>(strings.size() * sizeof(wchar_t)));
    ::RegCloseKey(key);
  }
  if (result != ERROR_SUCCESS) LogLine("logon notification: the console's user is not recorded");
}

std::wstring BootId() {
  std::ifstream file("/proc/sys/kernel/random/boot_id");
  std::string id;
  file >> id;
  return Wide(id);
}

}  // namespace platform::winlogon
