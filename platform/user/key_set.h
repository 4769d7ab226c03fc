// The keys and mouse buttons that are down, indexed by virtual key (VK_...). For Shift, Ctrl and
// Alt only the virtual key that does not distinguish left and right is used.
#pragma once

#include <windows.h>

#include <bitset>

namespace platform {

using KeySet = std::bitset<256>;

}  // namespace platform
