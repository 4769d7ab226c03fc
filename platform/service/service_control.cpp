// Control and status of services: ControlService, QueryServiceStatus, QueryServiceStatusEx.
#include <windows.h>
#include <winsvc.h>

#include <cstring>

#include "platform/kernel/api_result.h"
#include "platform/service/control_message.h"
#include "platform/service/driver_keeper.h"
#include "platform/service/service_database.h"
#include "platform/service/service_handle.h"
#include "platform/service/service_keeper.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

// A process that is being started has published nothing yet; only its keeper knows of it.
ServiceState StateOf(const ServiceObject& service) {
  const ServiceState state = ReadState(service.name, service.type);
  const bool dead = state.status.dwCurrentState == SERVICE_STOPPED && state.processId == 0;
  const bool starting =
      dead && !IsDriver(service.type) && CurrentKeeper()->IsStarting(service.name);
  return starting ? StartingState(service.type) : state;
}

// A driver has no process of its own to query; its published status is complete.
DWORD ControlDriver(const ServiceObject& service, DWORD control, SERVICE_STATUS& status) {
  status = ReadState(service.name, service.type).status;
  const DWORD error = JudgeControl(status, control);
  if (error != NO_ERROR || control != SERVICE_CONTROL_STOP) return error;
  const DWORD stopError = StopDriver(service.name);
  status = ReadState(service.name, service.type).status;
  return stopError;
}

// A running process judges the control itself, because it has the current status.
DWORD ControlProcess(const ServiceObject& service, DWORD control, SERVICE_STATUS& status) {
  ControlReply reply;
  DWORD error = SendControl(service.name, control, reply);
  const bool stops = control == SERVICE_CONTROL_STOP;
  if (error == NO_ERROR) {
    status = reply.status;
    if (stops && reply.error == NO_ERROR) CurrentKeeper()->NoteStop(service.name);
    return reply.error;
  }
  // No reply: the process has stopped or died, or it is still starting.
  status = StateOf(service).status;
  if (status.dwCurrentState == SERVICE_STOPPED) {
    // A process that died may be about to be started again.
    if (stops) CurrentKeeper()->NoteStop(service.name);
    return ERROR_SERVICE_NOT_ACTIVE;
  }
  if (error != ERROR_SERVICE_NOT_ACTIVE) return error;
  error = JudgeControl(status, control);
  return error == NO_ERROR ? ERROR_SERVICE_REQUEST_TIMEOUT : error;
}

bool ReportsStatus(DWORD error) {
  return error == NO_ERROR || error == ERROR_INVALID_SERVICE_CONTROL ||
         error == ERROR_SERVICE_CANNOT_ACCEPT_CTRL || error == ERROR_SERVICE_NOT_ACTIVE;
}

DWORD Control(SC_HANDLE handle, DWORD control, SERVICE_STATUS* status) {
  const DWORD access = AccessForControl(control);
  std::shared_ptr<ServiceObject> service;
  DWORD error = FindService(handle, access, service);
  if (error != NO_ERROR) return error;
  if (access == 0 || status == nullptr) return ERROR_INVALID_PARAMETER;
  SERVICE_STATUS current{};
  error = IsDriver(service->type) ? ControlDriver(*service, control, current)
                                  : ControlProcess(*service, control, current);
  if (ReportsStatus(error)) *status = current;
  return error;
}

DWORD QueryState(SC_HANDLE handle, ServiceState& state) {
  std::shared_ptr<ServiceObject> service;
  const DWORD error = FindService(handle, SERVICE_QUERY_STATUS, service);
  if (error == NO_ERROR) state = StateOf(*service);
  return error;
}

DWORD QueryProcess(SC_HANDLE handle, LPBYTE buffer, DWORD bytes, LPDWORD bytesNeeded) {
  ServiceState state;
  const DWORD error = QueryState(handle, state);
  if (error != NO_ERROR) return error;
  if (bytesNeeded == nullptr) return ERROR_INVALID_PARAMETER;
  *bytesNeeded = sizeof(SERVICE_STATUS_PROCESS);
  if (buffer == nullptr || bytes < sizeof(SERVICE_STATUS_PROCESS)) return ERROR_INSUFFICIENT_BUFFER;
  SERVICE_STATUS_PROCESS process{};
  static_assert(offsetof(SERVICE_STATUS_PROCESS, dwProcessId) == sizeof state.status);
  std::memcpy(&process, &state.status, sizeof state.status);
  process.dwProcessId = state.processId;
  std::memcpy(buffer, &process, sizeof process);
  return NO_ERROR;
}

}  // namespace
}  // namespace platform

extern "C" {

BOOL WINAPI ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status) try {
  return platform::BoolResult(platform::Control(service, control, status));
} catch (...) {
  return platform::FailedCall(FALSE);
}

BOOL WINAPI QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status) try {
  if (status == nullptr) return platform::BoolResult(ERROR_INVALID_PARAMETER);
  platform::ServiceState state;
  const DWORD error = platform::QueryState(service, state);
  if (error == NO_ERROR) *status = state.status;
  return platform::BoolResult(error);
} catch (...) {
  return platform::FailedCall(FALSE);
}

BOOL WINAPI QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE infoLevel, LPBYTE buffer,
                                 DWORD bytes, LPDWORD bytesNeeded) try {
  if (infoLevel != SC_STATUS_PROCESS_INFO) return platform::BoolResult(ERROR_INVALID_LEVEL);
  return platform::BoolResult(platform::QueryProcess(service, buffer, bytes, bytesNeeded));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
