// The driver services whose drivers this process hosts. A driver is loaded in the process that
// started its service; other processes see the service's lock and its published status. Any thread.
#pragma once

#include <windef.h>

#include <string_view>

#include "platform/kernel/file_descriptor.h"
#include "platform/service/service_database.h"

namespace platform {

// Loads the driver of the record. `lock` is the service's, taken by the caller, and is kept for as
// long as the driver is loaded. 0, or the error with which the start fails.
DWORD StartDriver(const ServiceRecord& record, FileDescriptor lock);

// Unloads the driver. ERROR_SERVICE_CANNOT_ACCEPT_CTRL when another process hosts it: only that
// process can unload it.
DWORD StopDriver(std::wstring_view name);

}  // namespace platform
