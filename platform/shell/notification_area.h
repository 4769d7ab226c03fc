// The notification area as the layer sees it. Without a desktop every icon is accepted and balloons
// are logged; the simulated machine reads the icons from here. Any thread.
#pragma once

#include <shellapi.h>

#include <functional>
#include <optional>

namespace platform {

// The icon of a window with that identifier, as the last change left it.
std::optional<NOTIFYICONDATAW> NotificationIcon(HWND window, UINT id);

// Sees every accepted change (NIM_...), after it took effect; empty: nobody.
using NotificationObserver = std::function<void(DWORD message, const NOTIFYICONDATAW&)>;
void SetNotificationObserver(NotificationObserver observer);

// Forgets every icon, as a shell that restarts does.
void ClearNotificationArea();

}  // namespace platform
