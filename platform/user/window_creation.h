// Gives windows their peers on a desktop, new windows and those that were there before it.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Makes the window's peer and shows it the window's properties. Does nothing for a window that has
// no place on a desktop: of another thread than the window thread, message-only, or without a
// parent there. Called by the window's thread, once for each desktop that it joins.
void GivePeer(Window& window);

}  // namespace platform
