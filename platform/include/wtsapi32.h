// Notifications of terminal sessions. The functions are found at run time in wtsapi32.dll.
#pragma once

#include <windef.h>

extern "C" {

#define NOTIFY_FOR_ALL_SESSIONS 1u
BOOL WINAPI WTSRegisterSessionNotification(HWND window, DWORD flags);
BOOL WINAPI WTSUnRegisterSessionNotification(HWND window);

}  // extern "C"
