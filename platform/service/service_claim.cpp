#include "platform/service/service_claim.h"

#include <winsvc.h>

#include <chrono>
#include <thread>

#include "platform/service/service_state.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kOldProcessTimeout{30};
constexpr std::chrono::milliseconds kPollInterval{10};

// Under the lock of the database, so that no other process deletes or starts the service meanwhile.
DWORD Claim(ServiceRecord& record, FileDescriptor& lock) {
  const std::wstring name = record.name;
  ServiceDatabase database;
  DWORD error = ReadStartable(database, name, record);
  if (error != NO_ERROR) return error;
  FileDescriptor taken;
  error = TakeServiceLock(record.name, taken);
  if (error == NO_ERROR) error = PublishState(record.name, StartingState(record.type));
  if (error == NO_ERROR) lock = std::move(taken);
  return error;
}

}  // namespace

DWORD ReadStartable(ServiceDatabase& database, std::wstring_view name, ServiceRecord& record) {
  const DWORD error = database.Read(name, record);
  if (error == ERROR_SERVICE_DOES_NOT_EXIST) return ERROR_SERVICE_MARKED_FOR_DELETE;
  if (error != NO_ERROR) return error;
  if (record.markedForDeletion) return ERROR_SERVICE_MARKED_FOR_DELETE;
  return record.startType == SERVICE_DISABLED ? ERROR_SERVICE_DISABLED : NO_ERROR;
}

DWORD ClaimService(ServiceRecord& record, FileDescriptor& lock) {
  const auto deadline = steady_clock::now() + kOldProcessTimeout;
  while (true) {
    const DWORD error = Claim(record, lock);
    if (error != ERROR_SERVICE_ALREADY_RUNNING) return error;
    const ServiceState state = ReadState(record.name, record.type);
    if (state.status.dwCurrentState != SERVICE_STOPPED) return error;
    if (steady_clock::now() >= deadline) return ERROR_SERVICE_REQUEST_TIMEOUT;
    std::this_thread::sleep_for(kPollInterval);
  }
}

}  // namespace platform
