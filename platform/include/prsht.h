// Property sheets.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>

extern "C" {

DECLARE_HANDLE(HPALETTE);
struct _PSP;
using HPROPSHEETPAGE = _PSP*;

#define PSP_DEFAULT 0x00000000u
#define PSP_USETITLE 0x00000008u
#define PSP_PREMATURE 0x00000400u
#define PSP_HIDEHEADER 0x00000800u
#define PSP_USEHEADERTITLE 0x00001000u
#define PSP_USEHEADERSUBTITLE 0x00002000u

struct PROPSHEETPAGEW;
using LPFNPSPCALLBACKW = UINT(CALLBACK*)(HWND window, UINT message, PROPSHEETPAGEW* page);
struct PROPSHEETPAGEW {
  DWORD dwSize;
  DWORD dwFlags;
  HINSTANCE hInstance;
  LPCWSTR pszTemplate;
  HICON hIcon;
  LPCWSTR pszTitle;
  DLGPROC pfnDlgProc;
  LPARAM lParam;
  LPFNPSPCALLBACKW pfnCallback;
  UINT* pcRefParent;
  LPCWSTR pszHeaderTitle;
  LPCWSTR pszHeaderSubTitle;
  HANDLE hActCtx;
};
using LPCPROPSHEETPAGEW = const PROPSHEETPAGEW*;
#define PROPSHEETPAGEW_V1_SIZE (offsetof(PROPSHEETPAGEW, pcRefParent) + sizeof(UINT*))
#define PROPSHEETPAGEW_V2_SIZE (offsetof(PROPSHEETPAGEW, pszHeaderSubTitle) + sizeof(LPCWSTR))

#define PSH_DEFAULT 0x00000000u
#define PSH_PROPSHEETPAGE 0x00000008u
#define PSH_NOAPPLYNOW 0x00000080u
#define PSH_WATERMARK 0x00008000u
#define PSH_HEADER 0x00080000u
#define PSH_WIZARD97 0x01000000u

using PFNPROPSHEETCALLBACK = int(CALLBACK*)(HWND sheet, UINT message, LPARAM parameter);
struct PROPSHEETHEADERW {
  DWORD dwSize;
  DWORD dwFlags;
  HWND hwndParent;
  HINSTANCE hInstance;
  HICON hIcon;
  LPCWSTR pszCaption;
  UINT nPages;
  union {
    UINT nStartPage;
    LPCWSTR pStartPage;
  };
  union {
    LPCPROPSHEETPAGEW ppsp;
    HPROPSHEETPAGE* phpage;
  };
  PFNPROPSHEETCALLBACK pfnCallback;
  union {
    HBITMAP hbmWatermark;
    LPCWSTR pszbmWatermark;
  };
  HPALETTE hplWatermark;
  union {
    HBITMAP hbmHeader;
    LPCWSTR pszbmHeader;
  };
};
using LPCPROPSHEETHEADERW = const PROPSHEETHEADERW*;
#define PROPSHEETHEADERW_V1_SIZE \
  (offsetof(PROPSHEETHEADERW, pfnCallback) + sizeof(PFNPROPSHEETCALLBACK))
#define PROPSHEETHEADERW_V2_SIZE (offsetof(PROPSHEETHEADERW, hbmHeader) + sizeof(HBITMAP))

HPROPSHEETPAGE WINAPI CreatePropertySheetPageW(LPCPROPSHEETPAGEW page);
BOOL WINAPI DestroyPropertySheetPage(HPROPSHEETPAGE page);
// The sheet owns its pages from now on. Positive when something was saved, 0 when nothing was,
// minus one on failure.
INT_PTR WINAPI PropertySheetW(LPCPROPSHEETHEADERW header);

struct PSHNOTIFY {
  NMHDR hdr;
  LPARAM lParam;
};
#define PSN_FIRST (0U - 200U)
#define PSN_SETACTIVE (PSN_FIRST - 0)
#define PSN_KILLACTIVE (PSN_FIRST - 1)
#define PSN_APPLY (PSN_FIRST - 2)
#define PSN_RESET (PSN_FIRST - 3)
#define PSN_WIZBACK (PSN_FIRST - 6)
#define PSN_WIZNEXT (PSN_FIRST - 7)
#define PSN_WIZFINISH (PSN_FIRST - 8)
#define PSN_QUERYCANCEL (PSN_FIRST - 9)
#define PSNRET_NOERROR 0
#define PSNRET_INVALID 1
#define PSNRET_INVALID_NOCHANGEPAGE 2

#define PSM_SETCURSEL (WM_USER + 101)
#define PSM_CHANGED (WM_USER + 104)
#define PSM_UNCHANGED (WM_USER + 109)
#define PSM_APPLY (WM_USER + 110)
#define PSM_SETWIZBUTTONS (WM_USER + 112)
#define PSM_PRESSBUTTON (WM_USER + 113)
#define PSM_GETTABCONTROL (WM_USER + 116)
#define PSM_GETCURRENTPAGEHWND (WM_USER + 118)
#define PSBTN_BACK 0
#define PSBTN_NEXT 1
#define PSBTN_FINISH 2
#define PSBTN_OK 3
#define PSBTN_APPLYNOW 4
#define PSBTN_CANCEL 5
#define PSWIZB_BACK 0x00000001
#define PSWIZB_NEXT 0x00000002
#define PSWIZB_FINISH 0x00000004
#define PSWIZB_DISABLEDFINISH 0x00000008

#define PropSheet_SetCurSel(sheet, page, index) \
  SNDMSG(sheet, PSM_SETCURSEL, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(page))
#define PropSheet_Changed(sheet, page) SNDMSG(sheet, PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0)
#define PropSheet_UnChanged(sheet, page) \
  SNDMSG(sheet, PSM_UNCHANGED, reinterpret_cast<WPARAM>(page), 0)
#define PropSheet_SetWizButtons(sheet, buttons) \
  ::PostMessageW(sheet, PSM_SETWIZBUTTONS, 0, static_cast<LPARAM>(buttons))
#define PropSheet_PressButton(sheet, button) \
  ::PostMessageW(sheet, PSM_PRESSBUTTON, static_cast<WPARAM>(button), 0)
#define PropSheet_GetTabControl(sheet) \
  reinterpret_cast<HWND>(SNDMSG(sheet, PSM_GETTABCONTROL, 0, 0))
#define PropSheet_GetCurrentPageHwnd(sheet) \
  reinterpret_cast<HWND>(SNDMSG(sheet, PSM_GETCURRENTPAGEHWND, 0, 0))

}  // extern "C"
