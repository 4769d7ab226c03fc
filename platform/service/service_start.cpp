// StartServiceW.
#include <windows.h>
#include <winsvc.h>

#include <chrono>
#include <thread>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/service/driver_keeper.h"
#include "platform/service/service_database.h"
#include "platform/service/service_handle.h"
#include "platform/service/service_starter.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

// How long a start waits for a process that has reported its stop and not exited yet.
constexpr std::chrono::seconds kOldProcessTimeout{30};
constexpr std::chrono::milliseconds kPollInterval{10};

ServiceState StartingState(DWORD type) {
  ServiceState state;
  state.status.dwServiceType = type;
  state.status.dwCurrentState = SERVICE_START_PENDING;
  state.status.dwWaitHint = 2000;
  return state;
}

// Reads the record, takes the lock and publishes the start, all under the lock of the database, so
// that no other process deletes or starts the service meanwhile.
DWORD Claim(const ServiceObject& service, ServiceRecord& record, FileDescriptor& lock) {
  ServiceDatabase database;
  DWORD error = database.Read(service.name, record);
  if (error == ERROR_SERVICE_DOES_NOT_EXIST) return ERROR_SERVICE_MARKED_FOR_DELETE;
  if (error != NO_ERROR) return error;
  if (record.markedForDeletion) return ERROR_SERVICE_MARKED_FOR_DELETE;
  if (record.startType == SERVICE_DISABLED) return ERROR_SERVICE_DISABLED;
  FileDescriptor taken;
  error = TakeServiceLock(record.name, taken);
  if (error == NO_ERROR) error = PublishState(record.name, StartingState(record.type));
  if (error == NO_ERROR) lock = std::move(taken);
  return error;
}

DWORD ClaimAfterOldProcess(const ServiceObject& service, ServiceRecord& record,
                           FileDescriptor& lock) {
  const auto deadline = steady_clock::now() + kOldProcessTimeout;
  while (true) {
    const DWORD error = Claim(service, record, lock);
    if (error != ERROR_SERVICE_ALREADY_RUNNING) return error;
    const ServiceState state = ReadState(service.name, service.type);
    if (state.status.dwCurrentState != SERVICE_STOPPED) return error;
    if (steady_clock::now() >= deadline) return ERROR_SERVICE_REQUEST_TIMEOUT;
    std::this_thread::sleep_for(kPollInterval);
  }
}

DWORD Start(SC_HANDLE handle, DWORD argumentCount) {
  std::shared_ptr<ServiceObject> service;
  DWORD error = FindService(handle, SERVICE_START, service);
  if (error != NO_ERROR) return error;
  if (argumentCount != 0) {
    LogLine("StartServiceW: no arguments can be passed to " + Utf8(service->name));
    return ERROR_INVALID_PARAMETER;
  }
  ServiceRecord record;
  FileDescriptor lock;
  error = ClaimAfterOldProcess(*service, record, lock);
  if (error != NO_ERROR) return error;
  return record.type == SERVICE_KERNEL_DRIVER ? StartDriver(record, std::move(lock))
                                              : StartServiceProcess(record, std::move(lock));
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI StartServiceW(SC_HANDLE service, DWORD argumentCount, LPCWSTR*) try {
  return platform::BoolResult(platform::Start(service, argumentCount));
} catch (...) {
  return platform::FailedCall(FALSE);
}
