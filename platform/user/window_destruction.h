// How windows end. Used by the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Ends a window with all that it owns and holds: WM_DESTROY, then WM_NCDESTROY. Nothing happens to
// a window that is on its way out already.
void DestroyWithAllItHas(const std::shared_ptr<Window>& window);

// Ends a window that refused to be created: WM_NCDESTROY alone.
void DestroyUncreated(const std::shared_ptr<Window>& window);

}  // namespace platform
