// What a service that systemd has started tells it: ready, stopping, alive. Any thread.
#pragma once

#include <winsvc.h>

namespace platform {

// Whether systemd has started this very process, not one above it, and listens to it.
bool IsStartedBySystemd();

// The dispatcher has taken the service over. The watchdog of the unit waits for a first sign of
// life: not every service gives one.
void NotifyTaken();

// The service has reported `status` after `before`. A change to running is ready, one to stop
// pending or stopped is stopping. A wait hint extends the time of a start or stop under way.
void NotifyStatus(const SERVICE_STATUS& before, const SERVICE_STATUS& status);

// A sign of life. From the first one on, the watchdog expects the next within its time.
void NotifyAlive();

}  // namespace platform
