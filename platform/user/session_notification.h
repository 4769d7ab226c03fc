// wtsapi32.dll: which windows are notified of user sessions, and of the machine's sleep with them.
// The machine is watched from the first registration of the process to the end of the last one. Any
// thread.
#pragma once

#include <windows.h>

#include "platform/kernel/modules.h"

namespace platform {

ExportTable SessionNotificationExports();

// Ends the registrations of a window that is destroyed. Called by the window's thread.
void ForgetSessionNotifications(HWND window);

}  // namespace platform
