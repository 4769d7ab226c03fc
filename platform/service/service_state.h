// The state of a service as every process can read it: a lock, which the service's process holds
// while it lives, and the status that it has published. The kernel releases the lock of a killed
// process, so a stale status is recognised. Any thread, any process.
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
// ERROR_SERVICE_ALREADY_RUNNING when the lock is held already.
DWORD TakeServiceLock(std::wstring_view name, FileDescriptor& lock);
bool IsServiceLockHeld(std::wstring_view name);

// For the holder of the lock only: replaces the published state atomically.
DWORD PublishState(std::wstring_view name, const ServiceState& state);
// Removes the published state.
void ForgetState(std::wstring_view name);

// The current state. Nothing published: stopped with ERROR_SERVICE_NEVER_STARTED. The process died
// without reporting its stop: stopped with ERROR_PROCESS_ABORTED. A process lives and its status
// cannot be read: running, without accepted controls. `serviceType` is the type of a state that was
// not read.
ServiceState ReadState(std::wstring_view name, DWORD serviceType);

// A service of that type that is being started, and a stopped one with that exit code.
ServiceState StartingState(DWORD serviceType);
ServiceState StoppedState(DWORD serviceType, DWORD exitCode);

}  // namespace platform
