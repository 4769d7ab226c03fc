// Fonts, device contexts and drawing.
#pragma once

#include <windef.h>

extern "C" {

#define FW_NORMAL 400
#define FW_BOLD 700
#define DEFAULT_CHARSET 1
#define DEFAULT_QUALITY 0
#define NONANTIALIASED_QUALITY 3
#define ANTIALIASED_QUALITY 4

#define LF_FACESIZE 32
struct LOGFONTW {
  LONG lfHeight;  // negative: of the characters, positive: of the line
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  WCHAR lfFaceName[LF_FACESIZE];
};

#define BS_SOLID 0
#define BS_NULL 1
struct LOGBRUSH {
  UINT lbStyle;
  COLORREF lbColor;
  ULONG_PTR lbHatch;
};

struct BITMAP {
  LONG bmType;
  LONG bmWidth;
  LONG bmHeight;
  LONG bmWidthBytes;
  WORD bmPlanes;
  WORD bmBitsPixel;
  LPVOID bmBits;
};

#define RGB(red, green, blue)                             \
  (static_cast<COLORREF>(static_cast<BYTE>(red)) |        \
   static_cast<COLORREF>(static_cast<BYTE>(green)) << 8 | \
   static_cast<COLORREF>(static_cast<BYTE>(blue)) << 16)
#define GetRValue(colour) (static_cast<BYTE>((colour)&0xFFu))
#define GetGValue(colour) (static_cast<BYTE>((colour) >> 8 & 0xFFu))
#define GetBValue(colour) (static_cast<BYTE>((colour) >> 16 & 0xFFu))
#define CLR_INVALID 0xFFFFFFFFu

HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font);
HBRUSH WINAPI CreateSolidBrush(COLORREF colour);
HBRUSH WINAPI CreateBrushIndirect(const LOGBRUSH* brush);
int WINAPI GetObjectW(HANDLE object, int bytes, LPVOID buffer);
BOOL WINAPI DeleteObject(HGDIOBJ object);

#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define SYSTEM_FONT 13
#define DEFAULT_GUI_FONT 17
HGDIOBJ WINAPI GetStockObject(int index);

HDC WINAPI CreateCompatibleDC(HDC context);
HBITMAP WINAPI CreateCompatibleBitmap(HDC context, int width, int height);
BOOL WINAPI DeleteDC(HDC context);
HGDIOBJ WINAPI SelectObject(HDC context, HGDIOBJ object);

#define LOGPIXELSX 88
#define LOGPIXELSY 90
int WINAPI GetDeviceCaps(HDC context, int index);

#define TRANSPARENT 1
#define OPAQUE 2
COLORREF WINAPI GetTextColor(HDC context);
COLORREF WINAPI SetTextColor(HDC context, COLORREF colour);
COLORREF WINAPI GetBkColor(HDC context);
COLORREF WINAPI SetBkColor(HDC context, COLORREF colour);
int WINAPI GetBkMode(HDC context);
int WINAPI SetBkMode(HDC context, int mode);

BOOL WINAPI TextOutW(HDC context, int x, int y, LPCWSTR text, int length);
BOOL WINAPI GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, LPSIZE size);

#define SRCCOPY 0x00CC0020u
BOOL WINAPI BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX,
                   int sourceY, DWORD operation);
COLORREF WINAPI GetPixel(HDC context, int x, int y);

}  // extern "C"
