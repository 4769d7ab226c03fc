// Runs the setup wizard: in a process of its own, or at the first start of the service.
#pragma once

#include "service/process_objects.h"

namespace quillgate {

// For the command line; on the first thread. Returns the exit code of the process: 1 when the
// wizard could not be shown, which standard error then says, else 0.
int RunSetupWizard(ProcessObjects& objects);

// At the first start, on the service main thread: returns when the wizard has been closed. Without
// a desktop the event log says how to run it later. Does nothing at any other start.
void RunSetupAtFirstStart(ProcessObjects& objects) noexcept;

}  // namespace quillgate
