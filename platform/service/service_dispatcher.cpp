// The service's own side: StartServiceCtrlDispatcherW, RegisterServiceCtrlHandlerW,
// SetServiceStatus.
#include <windows.h>
#include <winsvc.h>

#include "platform/kernel/api_result.h"
#include "platform/kernel/handle_table.h"
#include "platform/kernel/log.h"
#include "platform/service/service_host.h"

namespace platform {
namespace {

bool IsEntry(const SERVICE_TABLE_ENTRYW& entry) {
  return entry.lpServiceName != nullptr && entry.lpServiceProc != nullptr;
}

DWORD RunDispatcher(const SERVICE_TABLE_ENTRYW* table) {
  if (table == nullptr || !IsEntry(table[0])) return ERROR_INVALID_DATA;
  if (IsEntry(table[1])) {
    LogLine("StartServiceCtrlDispatcherW: one service in a process");
    return ERROR_INVALID_DATA;
  }
  if (ServiceHost::Current() != nullptr) return ERROR_SERVICE_ALREADY_RUNNING;
  ServiceHost* host = ServiceHost::Create();
  // A service that has the process to itself is known by its record, whatever the table calls it.
  return host == nullptr ? ERROR_FAILED_SERVICE_CONTROLLER_CONNECT
                         : host->Run(table[0].lpServiceProc);
}

}  // namespace
}  // namespace platform

extern "C" {

BOOL WINAPI StartServiceCtrlDispatcherW(const SERVICE_TABLE_ENTRYW* table) {
  return platform::BoolResult(platform::Guarded([&] { return platform::RunDispatcher(table); }));
}

SERVICE_STATUS_HANDLE WINAPI RegisterServiceCtrlHandlerW(LPCWSTR serviceName,
                                                         LPHANDLER_FUNCTION handler) {
  SERVICE_STATUS_HANDLE handle = nullptr;
  const DWORD error = platform::Guarded([&] {
    if (serviceName == nullptr || handler == nullptr) return ERROR_INVALID_PARAMETER;
    platform::ServiceHost* host = platform::ServiceHost::Current();
    if (host == nullptr) return ERROR_SERVICE_NOT_IN_EXE;
    handle = host->RegisterHandler(handler);
    return NO_ERROR;
  });
  return platform::HandleResult<SERVICE_STATUS_HANDLE>(error, handle, nullptr);
}

BOOL WINAPI SetServiceStatus(SERVICE_STATUS_HANDLE handle, LPSERVICE_STATUS status) {
  return platform::BoolResult(platform::Guarded([&] {
    using platform::HandleKind;
    if (platform::Handles().Find(HandleKind::kServiceStatus, handle) == nullptr) {
      return ERROR_INVALID_HANDLE;
    }
    if (status == nullptr) return ERROR_INVALID_PARAMETER;
    return platform::ServiceHost::Current()->SetStatus(*status);
  }));
}

}  // extern "C"
