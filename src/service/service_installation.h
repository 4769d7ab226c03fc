// The program's own entry in the service control manager. Failures are told in message boxes with
// the service's name as caption.
#pragma once

namespace quillgate {

// Makes the service afresh, to start with the system; it is not started. An entry that exists is
// removed first, with a pause for the manager to forget it. Whether it was made.
bool InstallService();

// Stops and removes the service. True when there is none.
bool UninstallService();

bool IsServiceInstalled();

// Sends the service the stop control; does not wait for its end.
void StopOwnService();

}  // namespace quillgate
