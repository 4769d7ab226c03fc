// The notification area and the command line's words.
#pragma once

#include <windows.h>

#include <cstddef>

extern "C" {

LPWSTR* WINAPI CommandLineToArgvW(LPCWSTR commandLine, int* argumentCount);

#define NIM_ADD 0x00000000u
#define NIM_MODIFY 0x00000001u
#define NIM_DELETE 0x00000002u
#define NIF_MESSAGE 0x00000001u
#define NIF_ICON 0x00000002u
#define NIF_TIP 0x00000004u
#define NIF_STATE 0x00000008u
#define NIF_INFO 0x00000010u
#define NIS_HIDDEN 0x00000001u
#define NIIF_NONE 0x00000000u
#define NIIF_INFO 0x00000001u
#define NIIF_WARNING 0x00000002u
#define NIIF_ERROR 0x00000003u
#define NIN_BALLOONSHOW (WM_USER + 2)
#define NIN_BALLOONHIDE (WM_USER + 3)
#define NIN_BALLOONTIMEOUT (WM_USER + 4)
#define NIN_BALLOONUSERCLICK (WM_USER + 5)

struct NOTIFYICONDATAW {
  DWORD cbSize;
  HWND hWnd;
  UINT uID;
  UINT uFlags;
  UINT uCallbackMessage;
  HICON hIcon;
  WCHAR szTip[128];
  DWORD dwState;
  DWORD dwStateMask;
  WCHAR szInfo[256];
  union {
    UINT uTimeout;
    UINT uVersion;
  };
  WCHAR szInfoTitle[64];
  DWORD dwInfoFlags;
  GUID guidItem;
  HICON hBalloonIcon;
};
using PNOTIFYICONDATAW = NOTIFYICONDATAW*;
// The structure as it was in version 5.
#define NOTIFYICONDATAW_V2_SIZE offsetof(NOTIFYICONDATAW, guidItem)

BOOL WINAPI Shell_NotifyIconW(DWORD message, PNOTIFYICONDATAW data);

}  // extern "C"
