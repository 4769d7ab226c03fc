// Starts the process of a service. Any thread.
#pragma once

#include <windef.h>

#include "platform/kernel/file_descriptor.h"
#include "platform/service/service_database.h"

namespace platform {

// Starts the service's process and waits until its dispatcher has taken the service over, 30 s at
// most. `lock` is the service's, taken by the caller; the process inherits it. 0, or the error of
// StartServiceW; the process has then been killed.
DWORD StartServiceProcess(const ServiceRecord& record, FileDescriptor lock);

}  // namespace platform
