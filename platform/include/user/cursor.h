// The pointer's shapes. They are the system's own and shared by all.
#pragma once

#include <windef.h>

extern "C" {

// wParam is the window that the pointer is in; lParam where in it, and the mouse's message.
#define WM_SETCURSOR 0x0020u
#define HTCLIENT 1

#define IDC_ARROW MAKEINTRESOURCEW(32512)
#define IDC_IBEAM MAKEINTRESOURCEW(32513)
#define IDC_WAIT MAKEINTRESOURCEW(32514)
#define IDC_CROSS MAKEINTRESOURCEW(32515)
#define IDC_SIZEWE MAKEINTRESOURCEW(32644)
#define IDC_SIZENS MAKEINTRESOURCEW(32645)
#define IDC_HAND MAKEINTRESOURCEW(32649)

HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name);
// The one before; null: the pointer is not to be seen.
HCURSOR WINAPI SetCursor(HCURSOR cursor);
HCURSOR WINAPI GetCursor();

}  // extern "C"
