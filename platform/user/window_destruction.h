// Destroying windows. For the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Destroys the window with its children and the windows it owns: WM_DESTROY, then WM_NCDESTROY.
// Ignored for a window that is being destroyed already.
void DestroyWithAllItHas(const std::shared_ptr<Window>& window);

// Destroys a window that refused WM_NCCREATE: WM_NCDESTROY only.
void DestroyUncreated(const std::shared_ptr<Window>& window);

}  // namespace platform
