// What the process does: it installs or removes the service, or is the service, by the first word
// of its command line.
#pragma once

#include <string>
#include <vector>

#include "service/process_objects.h"
#include "service/service_module.h"

namespace quillgate {

// Runs the process to its end, for the command line of these words. Its exit code: 1 when the
// database cannot be opened, else 0.
int RunProcess(ServiceModule& service, ProcessObjects& objects,
               const std::vector<std::wstring>& words);

}  // namespace quillgate
