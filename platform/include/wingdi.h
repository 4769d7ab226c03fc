// Fonts, device contexts and drawing.
#pragma once

#include <windef.h>

extern "C" {

#define FW_THIN 100
#define FW_NORMAL 400
#define FW_BOLD 700
#define FW_HEAVY 900
#define ANSI_CHARSET 0
#define DEFAULT_CHARSET 1
#define OUT_DEFAULT_PRECIS 0
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define PROOF_QUALITY 2
#define NONANTIALIASED_QUALITY 3
#define ANTIALIASED_QUALITY 4
#define VARIABLE_PITCH 2
#define FF_SWISS 0x20
#define FF_MODERN 0x30

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

#define PS_SOLID 0
#define PS_NULL 5
struct LOGPEN {
  UINT lopnStyle;
  POINT lopnWidth;  // y is not used
  COLORREF lopnColor;
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
HFONT WINAPI CreateFontW(int height, int width, int escapement, int orientation, int weight,
                         DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet,
                         DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                         DWORD pitchAndFamily, LPCWSTR face);
HPEN WINAPI CreatePen(int style, int width, COLORREF colour);
HBRUSH WINAPI CreateSolidBrush(COLORREF colour);
HBRUSH WINAPI CreateBrushIndirect(const LOGBRUSH* brush);
int WINAPI GetObjectW(HANDLE object, int bytes, LPVOID buffer);
BOOL WINAPI DeleteObject(HGDIOBJ object);

#define WHITE_BRUSH 0
#define GRAY_BRUSH 2
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define WHITE_PEN 6
#define BLACK_PEN 7
#define NULL_PEN 8
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
COLORREF WINAPI SetTextColor(HDC context, COLORREF colour);
COLORREF WINAPI SetBkColor(HDC context, COLORREF colour);
int WINAPI SetBkMode(HDC context, int mode);

#define R2_NOT 6
#define R2_XORPEN 7
#define R2_NOTXORPEN 10
#define R2_COPYPEN 13
int WINAPI SetROP2(HDC context, int operation);
BOOL WINAPI Rectangle(HDC context, int left, int top, int right, int bottom);

BOOL WINAPI TextOutW(HDC context, int x, int y, LPCWSTR text, int length);
BOOL WINAPI GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, LPSIZE size);

#define TMPF_FIXED_PITCH 0x01  // set in fonts that are of variable pitch
#define TMPF_VECTOR 0x02
#define TMPF_TRUETYPE 0x04
struct TEXTMETRICW {
  LONG tmHeight;
  LONG tmAscent;
  LONG tmDescent;
  LONG tmInternalLeading;
  LONG tmExternalLeading;
  LONG tmAveCharWidth;
  LONG tmMaxCharWidth;
  LONG tmWeight;
  LONG tmOverhang;
  LONG tmDigitizedAspectX;
  LONG tmDigitizedAspectY;
  WCHAR tmFirstChar;
  WCHAR tmLastChar;
  WCHAR tmDefaultChar;
  WCHAR tmBreakChar;
  BYTE tmItalic;
  BYTE tmUnderlined;
  BYTE tmStruckOut;
  BYTE tmPitchAndFamily;
  BYTE tmCharSet;
};
using LPTEXTMETRICW = TEXTMETRICW*;
BOOL WINAPI GetTextMetricsW(HDC context, LPTEXTMETRICW metrics);

#define SRCCOPY 0x00CC0020u
BOOL WINAPI BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX,
                   int sourceY, DWORD operation);
COLORREF WINAPI GetPixel(HDC context, int x, int y);

}  // extern "C"
