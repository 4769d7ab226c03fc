// The scroll bars of a window.
#pragma once

#include <windef.h>

extern "C" {

#define SB_HORZ 0
#define SB_VERT 1
#define SB_CTL 2
#define SB_BOTH 3

// The low word of wParam of WM_HSCROLL and WM_VSCROLL; the high word is where the thumb is, with
// the requests of the thumb alone.
#define SB_LINEUP 0
#define SB_LINEDOWN 1
#define SB_PAGEUP 2
#define SB_PAGEDOWN 3
#define SB_PAGERIGHT 3
#define SB_THUMBPOSITION 4
#define SB_THUMBTRACK 5
#define SB_TOP 6
#define SB_BOTTOM 7
#define SB_ENDSCROLL 8

BOOL WINAPI ShowScrollBar(HWND window, int bar, BOOL show);
BOOL WINAPI SetScrollRange(HWND window, int bar, int minimum, int maximum, BOOL redraw);
BOOL WINAPI GetScrollRange(HWND window, int bar, LPINT minimum, LPINT maximum);
int WINAPI SetScrollPos(HWND window, int bar, int position, BOOL redraw);
int WINAPI GetScrollPos(HWND window, int bar);

struct SCROLLINFO {
  UINT cbSize;
  UINT fMask;
  int nMin;
  int nMax;
  UINT nPage;
  int nPos;
  int nTrackPos;
};
using LPSCROLLINFO = SCROLLINFO*;
using LPCSCROLLINFO = const SCROLLINFO*;
#define SIF_RANGE 0x0001u
#define SIF_PAGE 0x0002u
#define SIF_POS 0x0004u
#define SIF_TRACKPOS 0x0010u
#define SIF_ALL (SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS)
int WINAPI SetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL redraw);
BOOL WINAPI GetScrollInfo(HWND window, int bar, LPSCROLLINFO info);

}  // extern "C"
