// The screen and the mouse, for whoever asks. Any thread.
#pragma once

#include <windows.h>

#include <functional>

#include "platform/user/desktop_module.h"

namespace platform {

// Asks the desktop, on the window thread while the caller waits. False when there is none; unlike
// RunOnWindowThread this does not make the caller the window thread.
bool AskDesktop(const std::function<void(DesktopModule&)>& question);

// Zero without a desktop.
SIZE ScreenSize();

}  // namespace platform
