// The device of each network interface, which answers the NDIS statistics. Any thread.
#pragma once

#include <memory>
#include <string_view>

#include "platform/device/device_table.h"

namespace platform {

// The device of the interface of that name; null when there is none. The default device resolver.
std::shared_ptr<Device> NetworkDevice(std::wstring_view name);

}  // namespace platform
