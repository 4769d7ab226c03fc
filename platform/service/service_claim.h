// The first step of a start: whether the service may be started, and its lock, which only one
// process can have. Any thread.
#pragma once

#include <windef.h>

#include <string_view>

#include "platform/kernel/file_descriptor.h"
#include "platform/service/service_database.h"

namespace platform {

// Reads the record of a service that existed when its handle was opened. 0, or the error of
// StartServiceW: the service is disabled, or is or was deleted.
DWORD ReadStartable(ServiceDatabase& database, std::wstring_view name, ServiceRecord& record);

// Reads the record again, takes the service's lock and publishes that the service starts. Waits for
// a process that has reported its stop and not exited yet, 30 s at most.
// ERROR_SERVICE_ALREADY_RUNNING when another process has the lock.
DWORD ClaimService(ServiceRecord& record, FileDescriptor& lock);

}  // namespace platform
