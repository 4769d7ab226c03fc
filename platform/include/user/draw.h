// Device contexts of windows, filling, and the desktop's colours and fonts.
#pragma once

#include <windef.h>
#include <wingdi.h>

extern "C" {

HDC WINAPI GetDC(HWND window);
int WINAPI ReleaseDC(HWND window, HDC context);
int WINAPI FillRect(HDC context, const RECT* area, HBRUSH brush);

#define DT_TOP 0x00000000u
#define DT_LEFT 0x00000000u
#define DT_CENTER 0x00000001u
#define DT_RIGHT 0x00000002u
#define DT_VCENTER 0x00000004u
#define DT_BOTTOM 0x00000008u
#define DT_WORDBREAK 0x00000010u
#define DT_SINGLELINE 0x00000020u
#define DT_NOCLIP 0x00000100u
#define DT_CALCRECT 0x00000400u
#define DT_NOPREFIX 0x00000800u
#define DT_EDITCONTROL 0x00002000u
#define DT_END_ELLIPSIS 0x00008000u
struct DRAWTEXTPARAMS {
  UINT cbSize;
  int iTabLength;
  int iLeftMargin;
  int iRightMargin;
  UINT uiLengthDrawn;
};
using LPDRAWTEXTPARAMS = DRAWTEXTPARAMS*;
int WINAPI DrawTextW(HDC context, LPCWSTR text, int length, LPRECT area, UINT format);
// No parameters are taken; the text is not changed.
int WINAPI DrawTextExW(HDC context, LPWSTR text, int length, LPRECT area, UINT format,
                       LPDRAWTEXTPARAMS parameters);

#define BDR_RAISEDOUTER 0x0001u
#define BDR_SUNKENOUTER 0x0002u
#define BDR_RAISEDINNER 0x0004u
#define BDR_SUNKENINNER 0x0008u
#define EDGE_RAISED (BDR_RAISEDOUTER | BDR_RAISEDINNER)
#define EDGE_SUNKEN (BDR_SUNKENOUTER | BDR_SUNKENINNER)
#define EDGE_ETCHED (BDR_SUNKENOUTER | BDR_RAISEDINNER)
#define EDGE_BUMP (BDR_RAISEDOUTER | BDR_SUNKENINNER)
#define BF_LEFT 0x0001u
#define BF_TOP 0x0002u
#define BF_RIGHT 0x0004u
#define BF_BOTTOM 0x0008u
#define BF_RECT (BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM)
#define BF_MIDDLE 0x0800u
#define BF_ADJUST 0x2000u
BOOL WINAPI DrawEdge(HDC context, LPRECT area, UINT edge, UINT flags);

#define DFC_BUTTON 4u
#define DFCS_BUTTONCHECK 0x0000u
#define DFCS_INACTIVE 0x0100u
#define DFCS_CHECKED 0x0400u
BOOL WINAPI DrawFrameControl(HDC context, LPRECT area, UINT type, UINT state);

#define COLOR_MENU 4
#define COLOR_WINDOW 5
#define COLOR_MENUTEXT 7
#define COLOR_WINDOWTEXT 8
#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14
#define COLOR_BTNFACE 15
#define COLOR_BTNSHADOW 16
#define COLOR_GRAYTEXT 17
#define COLOR_BTNHIGHLIGHT 20
#define COLOR_3DDKSHADOW 21
#define COLOR_3DLIGHT 22
#define COLOR_INFOBK 24
DWORD WINAPI GetSysColor(int index);
HBRUSH WINAPI GetSysColorBrush(int index);

struct NONCLIENTMETRICSW {
  UINT cbSize;
  int iBorderWidth;
  int iScrollWidth;
  int iScrollHeight;
  int iCaptionWidth;
  int iCaptionHeight;
  LOGFONTW lfCaptionFont;
  int iSmCaptionWidth;
  int iSmCaptionHeight;
  LOGFONTW lfSmCaptionFont;
  int iMenuWidth;
  int iMenuHeight;
  LOGFONTW lfMenuFont;
  LOGFONTW lfStatusFont;
  LOGFONTW lfMessageFont;
  int iPaddedBorderWidth;  // since Windows Vista; the size without it is accepted too
};
#define SPI_GETNONCLIENTMETRICS 0x0029u
#define SPI_GETWORKAREA 0x0030u
BOOL WINAPI SystemParametersInfoW(UINT action, UINT parameter, PVOID data, UINT update);

}  // extern "C"
