// The notification area of the layer: the record of all icons, which decides the result of every
// call. On a desktop with a notification area the icons are shown there; on a desktop without one
// no icon can be added. Without a desktop every icon is accepted, and balloons are logged. With an
// observer, as on the simulated machine, calls behave as without a desktop. Any thread.
#pragma once

#include <shellapi.h>

#include <functional>
#include <optional>

namespace platform {

// The icon with that window and identifier, as of its last change; nothing when there is none.
std::optional<NOTIFYICONDATAW> NotificationIcon(HWND window, UINT id);

// Called for every accepted change (NIM_...), after it took effect, in place of the desktop. Empty:
// no observer.
using NotificationObserver = std::function<void(DWORD message, const NOTIFYICONDATAW&)>;
void SetNotificationObserver(NotificationObserver observer);

// Removes every icon, as a shell that restarts does. The desktop is not notified.
void ClearNotificationArea();

// Removes the icons of a window that is destroyed.
void ForgetNotificationIconsOf(HWND window);

}  // namespace platform
