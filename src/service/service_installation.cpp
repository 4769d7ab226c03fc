#include "service/service_installation.h"

#include <windows.h>
#include <winsvc.h>

#include <array>

#include "handles/handle.h"
#include "service/service_names.h"

namespace quillgate {
namespace {

// Time for the manager to finish deleting the previous service.
constexpr DWORD kDeletionPauseMilliseconds = 1500;

constexpr wchar_t kNoManager[] = L"Couldn't open service manager.";
constexpr wchar_t kNoService[] = L"Couldn't open service.";
constexpr wchar_t kNotCreated[] = L"Couldn't create service.";
constexpr wchar_t kNotDeleted[] = L"Service could not be deleted.";

// Shows the text and returns false, the result of the failed function.
bool Fail(const wchar_t* text) {
  ::MessageBoxW(nullptr, text, kServiceName, MB_OK);
  return false;
}

ServiceHandle OpenManager() {
  return ServiceHandle(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
}

ServiceHandle OpenOwnService(const ServiceHandle& manager, DWORD access) {
  return ServiceHandle(::OpenServiceW(manager.Get(), kServiceName, access));
}

}  // namespace

bool IsServiceInstalled() {
  const ServiceHandle manager = OpenManager();
  return manager.IsValid() && OpenOwnService(manager, SERVICE_QUERY_CONFIG).IsValid();
}

bool InstallService() {
  if (IsServiceInstalled()) {
    UninstallService();
    ::Sleep(kDeletionPauseMilliseconds);
  }
  const ServiceHandle manager = OpenManager();
  if (!manager.IsValid()) return Fail(kNoManager);

  std::array<wchar_t, MAX_PATH> path{};
  ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  // The service shows its icon and dialogs itself, so it may interact with the desktop.
  const ServiceHandle service(::CreateServiceW(
      manager.Get(), kServiceName, kServiceDisplayName, SERVICE_ALL_ACCESS,
      SERVICE_WIN32_OWN_PROCESS | SERVICE_INTERACTIVE_PROCESS, SERVICE_AUTO_START,
      SERVICE_ERROR_NORMAL, path.data(), nullptr, nullptr, nullptr, nullptr, nullptr));
  return service.IsValid() || Fail(kNotCreated);
}

bool UninstallService() {
  if (!IsServiceInstalled()) return true;
  const ServiceHandle manager = OpenManager();
  if (!manager.IsValid()) return Fail(kNoManager);
  const ServiceHandle service = OpenOwnService(manager, SERVICE_STOP | DELETE);
  if (!service.IsValid()) return Fail(kNoService);
  SERVICE_STATUS status{};
  ::ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
  return ::DeleteService(service.Get()) || Fail(kNotDeleted);
}

void StopOwnService() {
  const ServiceHandle manager = OpenManager();
  if (!manager.IsValid()) {
    Fail(kNoManager);
    return;
  }
  const ServiceHandle service = OpenOwnService(manager, SERVICE_STOP);
  if (!service.IsValid()) {
    Fail(kNoService);
    return;
  }
  SERVICE_STATUS status{};
  ::ControlService(service.Get(), SERVICE_CONTROL_STOP, &status);
}

}  // namespace quillgate
