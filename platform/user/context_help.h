// F1: the help that a window's user asks for. Used on the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Sends WM_HELP to the window, with its number, its help text's number and the place of the
// mouse cursor. Windows pass the message on to their parents until one answers it.
void AskForHelp(const Window& window);
// The same, later.
void RequestHelp(const Window& window);

}  // namespace platform
