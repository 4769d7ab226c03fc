// Buffers that the account functions allocate.
#pragma once

#include <lmaccess.h>

extern "C" {

NET_API_STATUS WINAPI NetApiBufferFree(LPVOID buffer);

}  // extern "C"
