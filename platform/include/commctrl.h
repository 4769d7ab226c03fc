// The common controls: tabs, list views (report view), up-downs, date pickers and tool tips.
#pragma once

#include <user/control.h>
#include <user/message.h>
#include <winbase.h>
#include <windef.h>

#include <cstddef>

extern "C" {

struct INITCOMMONCONTROLSEX {
  DWORD dwSize;
  DWORD dwICC;
};

#define ICC_LISTVIEW_CLASSES 0x00000001u
#define ICC_BAR_CLASSES 0x00000004u
#define ICC_TAB_CLASSES 0x00000008u
#define ICC_UPDOWN_CLASS 0x00000010u
#define ICC_DATE_CLASSES 0x00000100u
#define ICC_STANDARD_CLASSES 0x00004000u
BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes);

#define WC_STATIC L"Static"
#define WC_BUTTON L"Button"
#define WC_EDIT L"Edit"
#define WC_COMBOBOX L"ComboBox"
#define WC_TABCONTROL L"SysTabControl32"
#define WC_LISTVIEW L"SysListView32"
#define UPDOWN_CLASS L"msctls_updown32"
#define DATETIMEPICK_CLASS L"SysDateTimePick32"
#define TOOLTIPS_CLASSW L"tooltips_class32"

#define SNDMSG ::SendMessageW

// Codes of WM_NOTIFY count down from each control's first.
#define NM_FIRST (0U - 0U)
#define NM_CLICK (NM_FIRST - 2)
#define NM_DBLCLK (NM_FIRST - 3)

// --- tabs ---
#define TCIF_TEXT 0x0001u
#define TCIF_PARAM 0x0008u
struct TCITEMW {
  UINT mask;
  DWORD dwState;
  DWORD dwStateMask;
  LPWSTR pszText;
  int cchTextMax;
  int iImage;
  LPARAM lParam;
};

#define TCM_FIRST 0x1300u
#define TCM_GETITEMCOUNT (TCM_FIRST + 4)
#define TCM_DELETEALLITEMS (TCM_FIRST + 9)
#define TCM_GETCURSEL (TCM_FIRST + 11)
#define TCM_SETCURSEL (TCM_FIRST + 12)
#define TCM_ADJUSTRECT (TCM_FIRST + 40)
#define TCM_GETITEMW (TCM_FIRST + 60)
#define TCM_SETITEMW (TCM_FIRST + 61)
#define TCM_INSERTITEMW (TCM_FIRST + 62)
#define TCN_FIRST (0U - 550U)
#define TCN_SELCHANGE (TCN_FIRST - 1)
#define TCN_SELCHANGING (TCN_FIRST - 2)

// --- list views ---
#define LVS_REPORT 0x0001u
#define LVS_TYPEMASK 0x0003u
#define LVS_SINGLESEL 0x0004u
#define LVS_SHOWSELALWAYS 0x0008u
#define LVS_ALIGNLEFT 0x0800u
#define LVS_OWNERDATA 0x1000u
#define LVS_NOCOLUMNHEADER 0x4000u
#define LVS_NOSORTHEADER 0x8000u
#define LVS_EX_GRIDLINES 0x00000001u
#define LVS_EX_CHECKBOXES 0x00000004u
#define LVS_EX_FULLROWSELECT 0x00000020u

#define LVIF_TEXT 0x00000001u
#define LVIF_PARAM 0x00000004u
#define LVIF_STATE 0x00000008u
#define LVIS_FOCUSED 0x0001u
#define LVIS_SELECTED 0x0002u
#define LVIS_STATEIMAGEMASK 0xF000u
#define INDEXTOSTATEIMAGEMASK(index) (static_cast<UINT>(index) << 12)
struct LVITEMW {
  UINT mask;
  int iItem;
  int iSubItem;
  UINT state;
  UINT stateMask;
  LPWSTR pszText;
  int cchTextMax;
  int iImage;
  LPARAM lParam;
  int iIndent;
  int iGroupId;
  UINT cColumns;
  UINT* puColumns;
  int* piColFmt;
  int iGroup;
};

#define LVCF_FMT 0x0001u
#define LVCF_WIDTH 0x0002u
#define LVCF_TEXT 0x0004u
#define LVCF_SUBITEM 0x0008u
#define LVCFMT_LEFT 0x0000
#define LVCFMT_RIGHT 0x0001
#define LVCFMT_CENTER 0x0002
#define LVCFMT_JUSTIFYMASK 0x0003
struct LVCOLUMNW {
  UINT mask;
  int fmt;
  int cx;
  LPWSTR pszText;
  int cchTextMax;
  int iSubItem;
  int iImage;
  int iOrder;
  int cxMin;
  int cxDefault;
  int cxIdeal;
};

#define LVNI_FOCUSED 0x0001u
#define LVNI_SELECTED 0x0002u
#define LVIR_BOUNDS 0
#define LVSCW_AUTOSIZE (-1)
#define LVSCW_AUTOSIZE_USEHEADER (-2)
#define LVSICF_NOINVALIDATEALL 0x00000001u
#define LVSICF_NOSCROLL 0x00000002u

#define LVM_FIRST 0x1000u
#define LVM_GETITEMCOUNT (LVM_FIRST + 4)
#define LVM_DELETEITEM (LVM_FIRST + 8)
#define LVM_DELETEALLITEMS (LVM_FIRST + 9)
#define LVM_GETNEXTITEM (LVM_FIRST + 12)
#define LVM_GETITEMRECT (LVM_FIRST + 14)
#define LVM_ENSUREVISIBLE (LVM_FIRST + 19)
#define LVM_REDRAWITEMS (LVM_FIRST + 21)
#define LVM_GETCOLUMNWIDTH (LVM_FIRST + 29)
#define LVM_SETCOLUMNWIDTH (LVM_FIRST + 30)
#define LVM_SETITEMSTATE (LVM_FIRST + 43)
#define LVM_GETITEMSTATE (LVM_FIRST + 44)
#define LVM_SETITEMCOUNT (LVM_FIRST + 47)
#define LVM_SORTITEMS (LVM_FIRST + 48)
#define LVM_GETSELECTEDCOUNT (LVM_FIRST + 50)
#define LVM_SETEXTENDEDLISTVIEWSTYLE (LVM_FIRST + 54)
#define LVM_GETEXTENDEDLISTVIEWSTYLE (LVM_FIRST + 55)
#define LVM_GETITEMW (LVM_FIRST + 75)
#define LVM_SETITEMW (LVM_FIRST + 76)
#define LVM_INSERTITEMW (LVM_FIRST + 77)
#define LVM_GETCOLUMNW (LVM_FIRST + 95)
#define LVM_SETCOLUMNW (LVM_FIRST + 96)
#define LVM_INSERTCOLUMNW (LVM_FIRST + 97)
#define LVM_GETITEMTEXTW (LVM_FIRST + 115)
#define LVM_SETITEMTEXTW (LVM_FIRST + 116)

// Negative, zero or positive, for the lParam of two items and the sort's own parameter.
using PFNLVCOMPARE = int(CALLBACK*)(LPARAM first, LPARAM second, LPARAM parameter);

struct NMLISTVIEW {
  NMHDR hdr;
  int iItem;
  int iSubItem;
  UINT uNewState;
  UINT uOldState;
  UINT uChanged;
  POINT ptAction;
  LPARAM lParam;
};
struct NMITEMACTIVATE {
  NMHDR hdr;
  int iItem;
  int iSubItem;
  UINT uNewState;
  UINT uOldState;
  UINT uChanged;
  POINT ptAction;
  LPARAM lParam;
  UINT uKeyFlags;
};
// The text that a list view with LVS_OWNERDATA asks for.
struct NMLVDISPINFOW {
  NMHDR hdr;
  LVITEMW item;
};
// The rows of such a list from one to another, both included.
struct NMLVODSTATECHANGE {
  NMHDR hdr;
  int iFrom;
  int iTo;
  UINT uNewState;
  UINT uOldState;
};
// Without space between its members, as in the real header.
#pragma pack(push, 1)
struct NMLVKEYDOWN {
  NMHDR hdr;
  WORD wVKey;
  UINT flags;
};
#pragma pack(pop)
#define LVN_FIRST (0U - 100U)
#define LVN_ITEMCHANGED (LVN_FIRST - 1)
#define LVN_INSERTITEM (LVN_FIRST - 2)
#define LVN_DELETEITEM (LVN_FIRST - 3)
#define LVN_DELETEALLITEMS (LVN_FIRST - 4)
#define LVN_COLUMNCLICK (LVN_FIRST - 8)
#define LVN_ODSTATECHANGED (LVN_FIRST - 15)
#define LVN_KEYDOWN (LVN_FIRST - 55)
#define LVN_GETDISPINFOW (LVN_FIRST - 77)

// --- up-downs ---
#define UDS_SETBUDDYINT 0x0002u
#define UDS_ALIGNRIGHT 0x0004u
#define UDS_ALIGNLEFT 0x0008u
#define UDS_AUTOBUDDY 0x0010u
#define UDS_ARROWKEYS 0x0020u
#define UDS_HORZ 0x0040u
#define UDS_NOTHOUSANDS 0x0080u

#define UDM_SETBUDDY (WM_USER + 105)
#define UDM_GETBUDDY (WM_USER + 106)
#define UDM_SETRANGE32 (WM_USER + 111)
#define UDM_GETRANGE32 (WM_USER + 112)
#define UDM_SETPOS32 (WM_USER + 113)
#define UDM_GETPOS32 (WM_USER + 114)
#define UDN_FIRST (0U - 721U)
#define UDN_DELTAPOS (UDN_FIRST - 1)
struct NMUPDOWN {
  NMHDR hdr;
  int iPos;
  int iDelta;
};

// --- tool tips ---
#define TTS_ALWAYSTIP 0x01u
#define TTS_NOPREFIX 0x02u
#define TTS_BALLOON 0x40u
#define TTF_SUBCLASS 0x0010u
struct TOOLINFOW {
  UINT cbSize;
  UINT uFlags;
  HWND hwnd;
  UINT_PTR uId;
  RECT rect;
  HINSTANCE hinst;
  LPWSTR lpszText;
  LPARAM lParam;
  void* lpReserved;
};
// The structure as every version of the controls takes it.
#define TTTOOLINFOW_V1_SIZE offsetof(TOOLINFOW, lParam)
#define TTM_SETMAXTIPWIDTH (WM_USER + 24)
#define TTM_ADDTOOLW (WM_USER + 50)
#define TTM_DELTOOLW (WM_USER + 51)

// --- date pickers ---
#define DTS_SHORTDATEFORMAT 0x0000u
#define DTS_SHORTDATECENTURYFORMAT 0x000Cu
#define DTS_RIGHTALIGN 0x0020u
#define MCS_WEEKNUMBERS 0x0004u
#define MCS_NOTODAYCIRCLE 0x0008u
#define MCS_NOTODAY 0x0010u
#define GDT_ERROR (-1)
#define GDT_VALID 0
#define GDT_NONE 1
#define GDTR_MIN 0x0001u
#define GDTR_MAX 0x0002u

#define DTM_FIRST 0x1000u
#define DTM_GETSYSTEMTIME (DTM_FIRST + 1)
#define DTM_SETSYSTEMTIME (DTM_FIRST + 2)
#define DTM_GETRANGE (DTM_FIRST + 3)
#define DTM_SETRANGE (DTM_FIRST + 4)
#define DTM_SETMCSTYLE (DTM_FIRST + 11)
#define DTM_GETMCSTYLE (DTM_FIRST + 12)
#define DTN_FIRST2 (0U - 753U)
#define DTN_DATETIMECHANGE (DTN_FIRST2 - 6)
#define DTN_DROPDOWN (DTN_FIRST2 - 1)
#define DTN_CLOSEUP (DTN_FIRST2)
struct NMDATETIMECHANGE {
  NMHDR nmhdr;
  DWORD dwFlags;
  SYSTEMTIME st;
};

}  // extern "C"

// Macros in the real header, with the same results.
inline int ListView_GetItemCount(HWND list) {
  return static_cast<int>(SNDMSG(list, LVM_GETITEMCOUNT, 0, 0));
}
inline BOOL ListView_DeleteAllItems(HWND list) {
  return static_cast<BOOL>(SNDMSG(list, LVM_DELETEALLITEMS, 0, 0));
}
inline int ListView_InsertItem(HWND list, const LVITEMW* item) {
  return static_cast<int>(SNDMSG(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(item)));
}
inline int ListView_InsertColumn(HWND list, int column, const LVCOLUMNW* data) {
  return static_cast<int>(
      SNDMSG(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(data)));
}
inline BOOL ListView_SetColumnWidth(HWND list, int column, int width) {
  return static_cast<BOOL>(
      SNDMSG(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0)));
}
inline DWORD ListView_SetExtendedListViewStyleEx(HWND list, DWORD mask, DWORD style) {
  return static_cast<DWORD>(
      SNDMSG(list, LVM_SETEXTENDEDLISTVIEWSTYLE, mask, static_cast<LPARAM>(style)));
}
inline BOOL ListView_SortItems(HWND list, PFNLVCOMPARE compare, LPARAM parameter) {
  return static_cast<BOOL>(SNDMSG(list, LVM_SORTITEMS, static_cast<WPARAM>(parameter),
                                  reinterpret_cast<LPARAM>(compare)));
}
inline UINT ListView_GetItemState(HWND list, int item, UINT mask) {
  return static_cast<UINT>(
      SNDMSG(list, LVM_GETITEMSTATE, static_cast<WPARAM>(item), static_cast<LPARAM>(mask)));
}
inline void ListView_SetItemState(HWND list, int item, UINT state, UINT mask) {
  LVITEMW data{};
  data.stateMask = mask;
  data.state = state;
  SNDMSG(list, LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&data));
}
inline void ListView_SetCheckState(HWND list, int item, BOOL check) {
  const UINT image = INDEXTOSTATEIMAGEMASK(check != FALSE ? 2 : 1);
  ListView_SetItemState(list, item, image, LVIS_STATEIMAGEMASK);
}
inline UINT ListView_GetCheckState(HWND list, int item) {
  return (ListView_GetItemState(list, item, LVIS_STATEIMAGEMASK) >> 12) - 1;
}
inline void ListView_SetItemText(HWND list, int item, int subItem, LPWSTR text) {
  LVITEMW data{};
  data.iSubItem = subItem;
  data.pszText = text;
  SNDMSG(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&data));
}
inline void ListView_GetItemText(HWND list, int item, int subItem, LPWSTR text, int characters) {
  LVITEMW data{};
  data.iSubItem = subItem;
  data.cchTextMax = characters;
  data.pszText = text;
  SNDMSG(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&data));
}
