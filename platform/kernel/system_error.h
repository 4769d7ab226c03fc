// Win32 error codes for failed calls of Linux. Any thread.
#pragma once

#include <windef.h>

namespace platform {

// The Win32 error code for a value of errno; ERROR_GEN_FAILURE when none fits.
DWORD ErrorFromErrno(int error);

}  // namespace platform
