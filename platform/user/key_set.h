// Keys and mouse buttons by their virtual keys (VK_...), those that are down being set. Of the keys
// that there are twice on a keyboard (Shift, Ctrl, Alt) the common number alone is used.
#pragma once

#include <windows.h>

#include <bitset>

namespace platform {

using KeySet = std::bitset<256>;

}  // namespace platform
