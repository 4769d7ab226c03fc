// Popup menus and the drawing of their items by the owner.
#pragma once

#include <windef.h>

extern "C" {

#define WM_DRAWITEM 0x002Bu
#define WM_MEASUREITEM 0x002Cu

#define MIIM_STATE 0x00000001u
#define MIIM_ID 0x00000002u
#define MIIM_SUBMENU 0x00000004u
#define MIIM_TYPE 0x00000010u
#define MIIM_DATA 0x00000020u
#define MIIM_STRING 0x00000040u
#define MIIM_FTYPE 0x00000100u

#define MF_STRING 0x00000000u
#define MF_ENABLED 0x00000000u
#define MF_GRAYED 0x00000001u
#define MFT_STRING 0x00000000u
#define MFT_OWNERDRAW 0x00000100u
#define MFT_SEPARATOR 0x00000800u
#define MFS_ENABLED 0x00000000u
#define MFS_GRAYED 0x00000003u
#define MFS_CHECKED 0x00000008u
#define MFS_DEFAULT 0x00001000u

struct MENUITEMINFOW {
  UINT cbSize;
  UINT fMask;
  UINT fType;
  UINT fState;
  UINT wID;
  HMENU hSubMenu;
  HBITMAP hbmpChecked;
  HBITMAP hbmpUnchecked;
  ULONG_PTR dwItemData;
  LPWSTR dwTypeData;
  UINT cch;
  HBITMAP hbmpItem;
};
using LPMENUITEMINFOW = MENUITEMINFOW*;
using LPCMENUITEMINFOW = const MENUITEMINFOW*;

#define ODT_MENU 1u
#define ODA_DRAWENTIRE 0x0001u
#define ODA_SELECT 0x0002u
#define ODS_SELECTED 0x0001u
#define ODS_GRAYED 0x0002u
#define ODS_CHECKED 0x0008u
#define ODS_DEFAULT 0x0020u

struct MEASUREITEMSTRUCT {
  UINT CtlType;
  UINT CtlID;
  UINT itemID;
  UINT itemWidth;
  UINT itemHeight;
  ULONG_PTR itemData;
};
struct DRAWITEMSTRUCT {
  UINT CtlType;
  UINT CtlID;
  UINT itemID;
  UINT itemAction;
  UINT itemState;
  HWND hwndItem;
  HDC hDC;
  RECT rcItem;
  ULONG_PTR itemData;
};

#define TPM_RIGHTBUTTON 0x0002u
#define TPM_CENTERALIGN 0x0004u
#define TPM_RIGHTALIGN 0x0008u
#define TPM_VCENTERALIGN 0x0010u
#define TPM_BOTTOMALIGN 0x0020u
#define TPM_NONOTIFY 0x0080u
#define TPM_RETURNCMD 0x0100u
struct TPMPARAMS {
  UINT cbSize;
  RECT rcExclude;
};
using LPTPMPARAMS = TPMPARAMS*;

HMENU WINAPI CreatePopupMenu();
BOOL WINAPI DestroyMenu(HMENU menu);
int WINAPI GetMenuItemCount(HMENU menu);
BOOL WINAPI InsertMenuItemW(HMENU menu, UINT item, BOOL byPosition, LPCMENUITEMINFOW information);
BOOL WINAPI AppendMenuW(HMENU menu, UINT flags, UINT_PTR command, LPCWSTR text);
BOOL WINAPI GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, LPMENUITEMINFOW information);
BOOL WINAPI SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition);
// With TPM_RETURNCMD the chosen command, which the documented type BOOL allows.
BOOL WINAPI TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND owner,
                             LPTPMPARAMS parameters);

}  // extern "C"
