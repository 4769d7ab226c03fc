// The service control manager's handles and deletion: OpenSCManagerW, OpenServiceW, DeleteService.
#include <windows.h>
#include <winsvc.h>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/service/service_database.h"
#include "platform/service/service_files.h"
#include "platform/service/service_handle.h"
#include "platform/service/service_keeper.h"

namespace platform {
namespace {

constexpr std::wstring_view kActiveDatabase = L"ServicesActive";
constexpr std::wstring_view kFailedDatabase = L"ServicesFailed";

bool IsEmpty(LPCWSTR text) {
  return text == nullptr || *text == L'\0';
}

DWORD OpenManager(LPCWSTR machine, LPCWSTR database, DWORD access, SC_HANDLE& handle) {
  if (!IsEmpty(machine)) {
    LogLine("OpenSCManagerW: no other machines");
    return RPC_S_SERVER_UNAVAILABLE;
  }
  if (!IsEmpty(database) && EqualNames(database, kFailedDatabase)) {
    return ERROR_DATABASE_DOES_NOT_EXIST;
  }
  if (!IsEmpty(database) && !EqualNames(database, kActiveDatabase)) return ERROR_INVALID_NAME;
  if ((access & ~SC_MANAGER_ALL_ACCESS) != 0) return ERROR_ACCESS_DENIED;
  const DWORD error = PrepareServiceFolders();
  if (error == NO_ERROR) handle = NewManagerHandle(access | SC_MANAGER_CONNECT);
  return error;
}

DWORD OpenExisting(SC_HANDLE managerHandle, LPCWSTR name, DWORD access, SC_HANDLE& handle) {
  std::shared_ptr<ManagerObject> manager;
  DWORD error = FindManager(managerHandle, SC_MANAGER_CONNECT, manager);
  if (error != NO_ERROR) return error;
  if (name == nullptr) return ERROR_INVALID_PARAMETER;
  if (!IsServiceName(name)) return ERROR_INVALID_NAME;
  if ((access & ~SERVICE_ALL_ACCESS) != 0) return ERROR_ACCESS_DENIED;
  ServiceDatabase database;
  ServiceRecord record;
  error = database.Read(name, record);
  if (error == NO_ERROR) handle = NewServiceHandle(name, record.type, access);
  return error;
}

DWORD Delete(SC_HANDLE handle) {
  std::shared_ptr<ServiceObject> service;
  DWORD error = FindService(handle, DELETE, service);
  if (error != NO_ERROR) return error;
  if (!IsDriver(service->type)) error = CurrentKeeper()->Remove(service->name);
  if (error != NO_ERROR) return error;
  ServiceDatabase database;
  error = database.Delete(service->name);
  // The service existed when the handle was opened, so it has been deleted since.
  return error == ERROR_SERVICE_DOES_NOT_EXIST ? ERROR_SERVICE_MARKED_FOR_DELETE : error;
}

}  // namespace
}  // namespace platform

extern "C" {

SC_HANDLE WINAPI OpenSCManagerW(LPCWSTR machine, LPCWSTR database, DWORD access) try {
  SC_HANDLE handle = nullptr;
  const DWORD error = platform::OpenManager(machine, database, access, handle);
  return platform::HandleResult<SC_HANDLE>(error, handle, nullptr);
} catch (...) {
  return platform::FailedCall<SC_HANDLE>(nullptr);
}

SC_HANDLE WINAPI OpenServiceW(SC_HANDLE manager, LPCWSTR serviceName, DWORD access) try {
  SC_HANDLE handle = nullptr;
  const DWORD error = platform::OpenExisting(manager, serviceName, access, handle);
  return platform::HandleResult<SC_HANDLE>(error, handle, nullptr);
} catch (...) {
  return platform::FailedCall<SC_HANDLE>(nullptr);
}

BOOL WINAPI DeleteService(SC_HANDLE service) try {
  return platform::BoolResult(platform::Delete(service));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
