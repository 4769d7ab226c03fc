// The GDI+ functions that the program calls: the flat API, loaded at run time, with the types of
// its documentation. The objects are opaque; every function returns a status, 0 for success.
#pragma once

#include <windows.h>

namespace quillgate {

struct GdiPlusGraphics;
struct GdiPlusFontFamily;
struct GdiPlusFont;
struct GdiPlusBrush;
struct GdiPlusStringFormat;

struct GdiPlusStartupInput {
  UINT version = 1;
  void* debugEventCallback = nullptr;
  BOOL suppressBackgroundThread = FALSE;
  BOOL suppressExternalCodecs = FALSE;
};

// Lengths in pixels, the unit of the graphics object. A width or height of 0 is unbounded.
struct GdiPlusRectangle {
  float x = 0;
  float y = 0;
  float width = 0;
  float height = 0;
};

inline constexpr int kGdiPlusUnitPoint = 3;
inline constexpr int kGdiPlusTextAntiAlias = 4;
inline constexpr int kGdiPlusStyleBold = 1;
inline constexpr int kGdiPlusStyleItalic = 2;

struct GdiPlusFunctions {
  int(WINAPI* startup)(ULONG_PTR* token, const GdiPlusStartupInput* input, void* output) = nullptr;
  void(WINAPI* shutdown)(ULONG_PTR token) = nullptr;

  int(WINAPI* createFromHdc)(HDC context, GdiPlusGraphics** graphics) = nullptr;
  int(WINAPI* deleteGraphics)(GdiPlusGraphics* graphics) = nullptr;
  int(WINAPI* setTextRenderingHint)(GdiPlusGraphics* graphics, int hint) = nullptr;

  int(WINAPI* createFontFamilyFromName)(const wchar_t* name, void* collection,
                                        GdiPlusFontFamily** family) = nullptr;
  int(WINAPI* deleteFontFamily)(GdiPlusFontFamily* family) = nullptr;
  int(WINAPI* createFont)(const GdiPlusFontFamily* family, float size, int style, int unit,
                          GdiPlusFont** font) = nullptr;
  int(WINAPI* deleteFont)(GdiPlusFont* font) = nullptr;

  // The colour is 0xAARRGGBB.
  int(WINAPI* createSolidFill)(DWORD colour, GdiPlusBrush** brush) = nullptr;
  int(WINAPI* deleteBrush)(GdiPlusBrush* brush) = nullptr;
  int(WINAPI* drawString)(GdiPlusGraphics* graphics, const wchar_t* text, int length,
                          const GdiPlusFont* font, const GdiPlusRectangle* layout,
                          const GdiPlusStringFormat* format, const GdiPlusBrush* brush) = nullptr;
};

}  // namespace quillgate
