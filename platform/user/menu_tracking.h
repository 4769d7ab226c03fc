// Who answers popup menus. Without a desktop nobody does: TrackPopupMenuEx fails. The simulated
// machine answers from data. Any thread.
#pragma once

#include <functional>

#include "platform/user/menu_backend.h"

namespace platform {

// The chosen command, or 0 for none.
using MenuTracker = std::function<UINT(const TrackedMenu&)>;
void SetMenuTracker(MenuTracker tracker);  // empty: as without a desktop

// Closes the menu that this window owns, if one is open; nothing is chosen then.
void CancelMenuOf(HWND owner);

}  // namespace platform
