// The system's IP filter driver, image "IpFltDrv", device "IpFilterDriver". It represents the
// kernel's packet filter and can be loaded when the kernel has nf_tables. The device has no control
// codes; opening it succeeds when this process may use the packet filter. Any thread.
#pragma once

#include <windef.h>

#include <memory>
#include <string_view>

#include "platform/device/driver_host.h"

namespace platform {

inline constexpr std::wstring_view kIpFilterImageStem = L"IpFltDrv";
inline constexpr std::wstring_view kIpFilterDeviceName = L"IpFilterDriver";

// Whether this process can use nf_tables in its network namespace. 0; ERROR_FILE_NOT_FOUND: the
// kernel has no nf_tables; ERROR_ACCESS_DENIED: this process has no right to use it.
DWORD AskPacketFilter();

// Null with `error` set: ERROR_FILE_NOT_FOUND when the kernel has no nf_tables,
// ERROR_ALREADY_EXISTS when the device exists already.
std::unique_ptr<LoadedDriver> LoadIpFilterDriver(DWORD& error);

}  // namespace platform
