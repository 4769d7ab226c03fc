// Help requested with F1. For the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Sends WM_HELP to the window, with its identifier, its help context and the position of the mouse
// cursor. DefWindowProcW passes the message on to the parent or owner.
void AskForHelp(const Window& window);
// Does the same as deferred work, if the window still exists then.
void RequestHelp(const Window& window);

}  // namespace platform
