// What everybody can see of a service: whether a process runs it, told by a lock which that process
// holds for as long as it lives, and the status that it has published. A process that is killed
// loses its lock with its life, so no status outlives it unnoticed. Any thread, any process.
#pragma once

#include <winsvc.h>

#include <string_view>

#include "platform/kernel/file_descriptor.h"

namespace platform {

struct ServiceState {
  SERVICE_STATUS status{};
  DWORD processId = 0;  // 0: no process
};

// Takes the lock, which is held until every copy of the descriptor is closed.
// ERROR_SERVICE_ALREADY_RUNNING when somebody holds it.
DWORD TakeServiceLock(std::wstring_view name, FileDescriptor& lock);
bool IsServiceLockHeld(std::wstring_view name);

// For the holder of the lock only: replaces what the others read, in one step.
DWORD PublishState(std::wstring_view name, const ServiceState& state);
void ForgetState(std::wstring_view name);

// The state as it is: stopped with ERROR_SERVICE_NEVER_STARTED when nothing is published, stopped
// with ERROR_PROCESS_ABORTED when the process died, running without accepted controls when a
// process lives whose status cannot be read. `serviceType` is for a status that is not published.
ServiceState ReadState(std::wstring_view name, DWORD serviceType);

// A stopped service of that type with that exit code.
ServiceState StoppedState(DWORD serviceType, DWORD exitCode);

}  // namespace platform
