// HTML Help: the commands and the popup that a viewer is asked for. Types only: the viewer's
// library is loaded at run time, where there is one.
#pragma once

#include <windows.h>

#define HH_DISPLAY_TOPIC 0x0000u
#define HH_DISPLAY_TEXT_POPUP 0x000Eu
#define HH_INITIALIZE 0x001Cu
#define HH_UNINITIALIZE 0x001Du

struct HH_POPUP {
  int cbStruct;
  HINSTANCE hinst;
  UINT idString;
  LPCWSTR pszText;
  POINT pt;
  COLORREF clrForeground;
  COLORREF clrBackground;
  RECT rcMargins;
  LPCWSTR pszFont;
};
