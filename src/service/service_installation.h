// The entry of this service in the service control manager. Failures are shown in message boxes
// with the name of the service as caption.
#pragma once

namespace quillgate {

// Creates the service, to start with the system; it is not started. An existing service is removed
// first, followed by a pause in which the manager deletes it. Returns whether the service was
// created.
bool InstallService();

// Stops and removes the service. True also when it is not installed.
bool UninstallService();

bool IsServiceInstalled();

// Sends the stop control to the service; does not wait until it has stopped.
void StopOwnService();

}  // namespace quillgate
