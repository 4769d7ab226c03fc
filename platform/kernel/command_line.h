// The arguments of the process's command line. Any thread.
#pragma once

#include <windef.h>

namespace platform {

// The process's command line after the program's name, as wWinMain receives it. Lives as long as
// the process.
LPWSTR CommandLineArguments();

}  // namespace platform
