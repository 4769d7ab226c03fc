// Installs the service, removes it, sets it up or runs it, depending on the first argument of the
// command line.
#pragma once

#include <string>
#include <vector>

#include "service/process_objects.h"
#include "service/service_module.h"

namespace quillgate {

// Runs the process with these command line words and returns its exit code: 1 when the database
// cannot be opened or the setup wizard cannot be shown, else 0.
int RunProcess(ServiceModule& service, ProcessObjects& objects,
               const std::vector<std::wstring>& words);

}  // namespace quillgate
