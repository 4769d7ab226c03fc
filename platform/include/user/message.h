// Messages, thread queues and timers.
#pragma once

#include <user/window.h>
#include <windef.h>

extern "C" {

#define WM_NULL 0x0000u
#define WM_CREATE 0x0001u
#define WM_DESTROY 0x0002u
#define WM_MOVE 0x0003u
#define WM_SIZE 0x0005u
#define WM_ACTIVATE 0x0006u
#define WM_SETFOCUS 0x0007u
#define WM_KILLFOCUS 0x0008u
#define WM_ENABLE 0x000Au
#define WM_SETTEXT 0x000Cu
#define WM_GETTEXT 0x000Du
#define WM_GETTEXTLENGTH 0x000Eu
#define WM_PAINT 0x000Fu
#define WM_CLOSE 0x0010u
#define WM_QUIT 0x0012u
#define WM_ERASEBKGND 0x0014u
#define WM_SHOWWINDOW 0x0018u
#define WM_CANCELMODE 0x001Fu
#define WM_SETFONT 0x0030u
#define WM_GETFONT 0x0031u
#define WM_HELP 0x0053u
#define WM_CONTEXTMENU 0x007Bu
#define WM_STYLECHANGED 0x007Du
#define WM_DISPLAYCHANGE 0x007Eu
#define WM_NOTIFY 0x004Eu
#define WM_NCCREATE 0x0081u
#define WM_NCDESTROY 0x0082u
#define WM_COMMAND 0x0111u
#define WM_TIMER 0x0113u
#define WM_HSCROLL 0x0114u
#define WM_VSCROLL 0x0115u
#define WM_POWERBROADCAST 0x0218u
#define WM_WTSSESSION_CHANGE 0x02B1u
#define WM_USER 0x0400u
#define WM_APP 0x8000u

// WM_ACTIVATE, in the low word of wParam
#define WA_INACTIVE 0
#define WA_ACTIVE 1
// WM_SIZE
#define SIZE_RESTORED 0
#define SIZE_MAXIMIZED 2

#define PBT_APMQUERYSUSPEND 0x0000u
#define PBT_APMSUSPEND 0x0004u
#define PBT_APMRESUMECRITICAL 0x0006u
#define PBT_APMRESUMESUSPEND 0x0007u
// The answer to PBT_APMQUERYSUSPEND that refuses.
#define BROADCAST_QUERY_DENY 0x424D5144

#define WTS_CONSOLE_CONNECT 0x1u
#define WTS_CONSOLE_DISCONNECT 0x2u
#define WTS_SESSION_LOGON 0x5u
#define WTS_SESSION_LOGOFF 0x6u
#define WTS_SESSION_LOCK 0x7u
#define WTS_SESSION_UNLOCK 0x8u

struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;
  POINT pt;
};
using LPMSG = MSG*;

#define PM_NOREMOVE 0x0000u
#define PM_REMOVE 0x0001u
// Minus one on failure, which the documented type BOOL allows.
BOOL WINAPI GetMessageW(LPMSG message, HWND window, UINT first, UINT last);
BOOL WINAPI PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove);
BOOL WINAPI TranslateMessage(const MSG* message);
LRESULT WINAPI DispatchMessageW(const MSG* message);
// The window HWND_BROADCAST stands for every top-level window of the process.
#define HWND_BROADCAST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(0xFFFF)))
LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL WINAPI PostThreadMessageW(DWORD threadId, UINT message, WPARAM wParam, LPARAM lParam);
void WINAPI PostQuitMessage(int exitCode);
UINT WINAPI RegisterWindowMessageW(LPCWSTR name);

UINT_PTR WINAPI SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC callback);
BOOL WINAPI KillTimer(HWND window, UINT_PTR id);

}  // extern "C"
