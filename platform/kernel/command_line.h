// The words of a command line. Any thread.
#pragma once

#include <windef.h>

namespace platform {

// The process's command line behind the program's name: what wWinMain is given.
LPWSTR CommandLineArguments();

}  // namespace platform
