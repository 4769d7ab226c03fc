// The screen and the mouse, for whoever asks. Any thread.
#pragma once

#include <windows.h>

namespace platform {

// Zero without a desktop.
SIZE ScreenSize();

// What panels leave of the first screen; empty without a desktop. Any thread.
RECT WorkArea();

}  // namespace platform
