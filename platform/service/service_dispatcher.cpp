// The functions that a service itself calls: StartServiceCtrlDispatcherW,
// RegisterServiceCtrlHandlerW, SetServiceStatus.
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
  // The name in the table is ignored for a service with a process of its own.
  return host == nullptr ? ERROR_FAILED_SERVICE_CONTROLLER_CONNECT
                         : host->Run(table[0].lpServiceProc);
}

}  // namespace
}  // namespace platform

extern "C" {

BOOL WINAPI StartServiceCtrlDispatcherW(const SERVICE_TABLE_ENTRYW* table) try {
  return platform::BoolResult(platform::RunDispatcher(table));
} catch (...) {
  return platform::FailedCall(FALSE);
}

SERVICE_STATUS_HANDLE WINAPI RegisterServiceCtrlHandlerW(LPCWSTR serviceName,
                                                         LPHANDLER_FUNCTION handler) try {
  const auto fail = [](DWORD error) {
    return platform::HandleResult<SERVICE_STATUS_HANDLE>(error, nullptr, nullptr);
  };
  if (serviceName == nullptr || handler == nullptr) return fail(ERROR_INVALID_PARAMETER);
  platform::ServiceHost* host = platform::ServiceHost::Current();
  return host != nullptr ? host->RegisterHandler(handler) : fail(ERROR_SERVICE_NOT_IN_EXE);
} catch (...) {
  return platform::FailedCall<SERVICE_STATUS_HANDLE>(nullptr);
}

BOOL WINAPI SetServiceStatus(SERVICE_STATUS_HANDLE handle, LPSERVICE_STATUS status) try {
  using platform::HandleKind;
  if (platform::Handles().Find(HandleKind::kServiceStatus, handle) == nullptr) {
    return platform::BoolResult(ERROR_INVALID_HANDLE);
  }
  if (status == nullptr) return platform::BoolResult(ERROR_INVALID_PARAMETER);
  return platform::BoolResult(platform::ServiceHost::Current()->SetStatus(*status));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
