// The system's own IP filter driver, image "IpFltDrv", device "IpFilterDriver". It stands for the
// kernel's packet filter: present when the kernel has nf_tables. The device has no control codes;
// opening it tells whether this process may use the filter. Any thread.
#pragma once

#include <windef.h>

#include <memory>
#include <string_view>

#include "platform/device/driver_host.h"

namespace platform {

inline constexpr std::wstring_view kIpFilterImageStem = L"IpFltDrv";
inline constexpr std::wstring_view kIpFilterDeviceName = L"IpFilterDriver";

// Whether the kernel's nf_tables is there for this process, in its network namespace. 0;
// ERROR_FILE_NOT_FOUND: the kernel has none; ERROR_ACCESS_DENIED: no right to use it.
DWORD AskPacketFilter();

// Null with ERROR_FILE_NOT_FOUND when the kernel has no nf_tables.
std::unique_ptr<LoadedDriver> LoadIpFilterDriver(DWORD& error);

}  // namespace platform
