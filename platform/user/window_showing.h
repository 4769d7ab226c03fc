// Showing, hiding, enabling and disabling windows. For the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Sends WM_SHOWWINDOW and shows or hides the window. A top-level window that is first shown is sent
// its bounds. A window that is hidden loses the focus and the activation. `activate` applies to
// top-level windows only.
void SetShown(const std::shared_ptr<Window>& window, bool shown, bool activate);

// Whether the window and all windows that it is in are shown, or enabled.
bool IsShownWithParents(const Window& window);
bool IsEnabledWithParents(const Window& window);

}  // namespace platform
