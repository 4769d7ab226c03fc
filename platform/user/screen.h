// The screen and the mouse, for whoever asks. Any thread.
#pragma once

#include <windows.h>

namespace platform {

// Zero without a desktop.
SIZE ScreenSize();

}  // namespace platform
