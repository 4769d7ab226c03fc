// Showing, hiding, enabling and disabling windows. Functions for the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// WM_SHOWWINDOW, then the change; a top-level window that is first shown is told its place. What is
// hidden loses the keyboard and the activation. `activate` has a meaning for top-level windows
// only.
void SetShown(const std::shared_ptr<Window>& window, bool shown, bool activate);

// Whether the window and all that it is in are shown, or enabled.
bool IsShownWithParents(const Window& window);
bool IsEnabledWithParents(const Window& window);

}  // namespace platform
