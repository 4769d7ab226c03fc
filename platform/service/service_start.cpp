// StartServiceW.
#include <windows.h>
#include <winsvc.h>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/service/driver_keeper.h"
#include "platform/service/service_claim.h"
#include "platform/service/service_database.h"
#include "platform/service/service_handle.h"
#include "platform/service/service_keeper.h"

namespace platform {
namespace {

// The database is unlocked again when this returns: a start takes a while.
DWORD ReadRecord(std::wstring_view name, ServiceRecord& record) {
  ServiceDatabase database;
  return ReadStartable(database, name, record);
}

DWORD StartByType(std::wstring_view name) {
  ServiceRecord record;
  DWORD error = ReadRecord(name, record);
  if (error != NO_ERROR) return error;
  if (!IsDriver(record.type)) return CurrentKeeper()->Start(record);
  FileDescriptor lock;
  error = ClaimService(record, lock);
  return error == NO_ERROR ? StartDriver(record, std::move(lock)) : error;
}

DWORD Start(SC_HANDLE handle, DWORD argumentCount) {
  std::shared_ptr<ServiceObject> service;
  const DWORD error = FindService(handle, SERVICE_START, service);
  if (error != NO_ERROR) return error;
  if (argumentCount != 0) {
    LogLine("StartServiceW: no arguments can be passed to " + Utf8(service->name));
    return ERROR_INVALID_PARAMETER;
  }
  return StartByType(service->name);
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI StartServiceW(SC_HANDLE service, DWORD argumentCount, LPCWSTR*) try {
  return platform::BoolResult(platform::Start(service, argumentCount));
} catch (...) {
  return platform::FailedCall(FALSE);
}
