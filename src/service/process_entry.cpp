#include "service/process_entry.h"

#include <windows.h>

#include "gate/ip_filter_hook.h"
#include "handles/handle.h"
#include "service/command_line.h"
#include "service/service_installation.h"
#include "service/service_names.h"
#include "service/setup_run.h"

namespace quillgate {
namespace {

constexpr wchar_t kProgramKey[] = L"Software\\Quillgate";
// Other programs read the value under exactly this name.
constexpr wchar_t kInstallPathValue[] = L"IInstallPath";
constexpr std::size_t kPathLimit = 259;

// Records the folder of the program as it was started. Failures are ignored.
void RecordInstallPath(const std::wstring& program) {
  HKEY key = nullptr;
  if (::RegCreateKeyExW(HKEY_LOCAL_MACHINE, kProgramKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
    return;
  }
  const RegistryKey owner(key);
  const std::wstring folder = FolderOf(program.substr(0, kPathLimit));
  ::RegSetValueExW(key, kInstallPathValue, 0, REG_SZ, reinterpret_cast<const BYTE*>(folder.c_str()),
                   static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
}

// A service that was killed while it blocked has left the gate closed, and once it is removed no
// process opens the gate again. A service that still runs holds the hook and opens the gate when it
// stops. On a machine without the drivers there is nothing to open, and they must not be installed
// now.
void OpenGateForGood() {
  IpFilterHook hook;
  if (hook.StartInstalled()) hook.Pass();
  hook.Stop();
}

}  // namespace

int RunProcess(ServiceModule& service, ProcessObjects& objects,
               const std::vector<std::wstring>& words) {
  RecordInstallPath(words.empty() ? std::wstring() : words.front());
  if (!service.Initialise(kServiceName, kServiceDisplayName)) return 1;
  switch (CommandOf(words)) {
    case CommandWord::kRunService:
      service.RunAsService();
      break;
    case CommandWord::kInstall:
      InstallService();
      break;
    case CommandWord::kUninstall:
      UninstallService();
      OpenGateForGood();
      break;
    case CommandWord::kSetupWizard:
      return RunSetupWizard(objects);
    case CommandWord::kUnknown:
      break;
  }
  return 0;
}

}  // namespace quillgate
