// Dialogs: templates, the class "#32770" and the functions that work on a dialog's controls.
#pragma once

#include <user/control.h>
#include <user/message.h>
#include <user/window.h>
#include <windef.h>

extern "C" {

#define DS_3DLOOK 0x00000004u
#define DS_FIXEDSYS 0x00000008u
#define DS_SETFONT 0x00000040u
#define DS_MODALFRAME 0x00000080u
#define DS_SETFOREGROUND 0x00000200u
#define DS_CONTROL 0x00000400u
#define DS_CENTER 0x00000800u
#define DS_SHELLFONT (DS_SETFONT | DS_FIXEDSYS)

#define WS_EX_CONTROLPARENT 0x00010000u

#define WM_NEXTDLGCTL 0x0028u
#define WM_GETDLGCODE 0x0087u
#define WM_INITDIALOG 0x0110u

#define DM_GETDEFID (WM_USER + 0)
#define DM_SETDEFID (WM_USER + 1)
#define DC_HASDEFID 0x534B

#define DWLP_MSGRESULT 0
#define DWLP_DLGPROC (DWLP_MSGRESULT + static_cast<int>(sizeof(LRESULT)))
#define DWLP_USER (DWLP_DLGPROC + static_cast<int>(sizeof(DLGPROC)))

// Nonzero: the message was handled, with DWLP_MSGRESULT as its result.
using DLGPROC = INT_PTR(CALLBACK*)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Minus one on failure, with the last error; else what EndDialog was given.
INT_PTR WINAPI DialogBoxParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter);
HWND WINAPI CreateDialogParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter);
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result);
// Gives a message of the dialog, or of a window in it, to whom it is for. False: it is of neither.
BOOL WINAPI IsDialogMessageW(HWND dialog, LPMSG message);

HWND WINAPI GetDlgItem(HWND dialog, int id);
int WINAPI GetDlgCtrlID(HWND window);
// Changes dialog units into pixels.
BOOL WINAPI MapDialogRect(HWND dialog, LPRECT rect);
// What WM_HELP tells: which window F1 was pressed in, and the number of its help text.
struct HELPINFO {
  UINT cbSize;
  int iContextType;
  int iCtrlId;
  HANDLE hItemHandle;
  DWORD_PTR dwContextId;
  POINT MousePos;
};
#define HELPINFO_WINDOW 0x0001
BOOL WINAPI SetWindowContextHelpId(HWND window, DWORD number);

HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);

}  // extern "C"
