// The notification area as the layer sees it: the record that answers every call, whatever shows
// the icons. On a desktop with a notification area that does; on one without, no icon can be added.
// Without a desktop every icon is accepted and balloons are logged. The simulated machine observes
// the changes, and then it is as without a desktop. Any thread.
#pragma once

#include <shellapi.h>

#include <functional>
#include <optional>

namespace platform {

// The icon of a window with that identifier, as the last change left it.
std::optional<NOTIFYICONDATAW> NotificationIcon(HWND window, UINT id);

// Sees every accepted change (NIM_...), after it took effect, in place of the desktop; empty:
// nobody.
using NotificationObserver = std::function<void(DWORD message, const NOTIFYICONDATAW&)>;
void SetNotificationObserver(NotificationObserver observer);

// Forgets every icon, as a shell that restarts does. The desktop is not told.
void ClearNotificationArea();

// Icons go with their windows.
void ForgetNotificationIconsOf(HWND window);

}  // namespace platform
