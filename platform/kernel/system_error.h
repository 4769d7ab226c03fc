// What a failed call of the operating system is called in the API.
#pragma once

#include <windef.h>

namespace platform {

// The Win32 error code for a value of errno; ERROR_GEN_FAILURE when there is no better one.
DWORD ErrorFromErrno(int error);

}  // namespace platform
