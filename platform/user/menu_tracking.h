// Tracking popup menus. Without a desktop TrackPopupMenuEx fails; the simulated machine supplies
// the choice from data. Any thread.
#pragma once

#include <functional>

#include "platform/user/menu_backend.h"

namespace platform {

// The chosen command, or 0 for none.
using MenuTracker = std::function<UINT(const TrackedMenu&)>;
void SetMenuTracker(MenuTracker tracker);  // empty: as without a desktop

// Closes the open menu of that owner, if there is one; TrackPopupMenuEx then returns 0.
void CancelMenuOf(HWND owner);

}  // namespace platform
