// Painting a window.
#pragma once

#include <windef.h>

extern "C" {

struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
};
using LPPAINTSTRUCT = PAINTSTRUCT*;

BOOL WINAPI InvalidateRect(HWND window, const RECT* area, BOOL erase);
BOOL WINAPI UpdateWindow(HWND window);
HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint);
BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* paint);

}  // extern "C"
