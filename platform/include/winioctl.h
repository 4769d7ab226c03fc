// Device control codes.
#pragma once

#include <windef.h>

#define METHOD_BUFFERED 0u
#define METHOD_OUT_DIRECT 2u
#define FILE_ANY_ACCESS 0u
#define FILE_READ_ACCESS 1u
#define FILE_WRITE_ACCESS 2u
#define FILE_DEVICE_PHYSICAL_NETCARD 0x00000017u
#define CTL_CODE(deviceType, function, method, access) \
  (((deviceType) << 16) | ((access) << 14) | ((function) << 2) | (method))
