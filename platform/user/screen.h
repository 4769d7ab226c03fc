// The size and the work area of the screen. Any thread.
#pragma once

#include <windows.h>

namespace platform {

// Zero without a desktop.
SIZE ScreenSize();

// The part of the first screen that panels do not cover; empty without a desktop.
RECT WorkArea();

}  // namespace platform
