// Icons and bitmaps as resources, put together byte by byte.
#pragma once

#include <windows.h>

// Bitmaps of two by two pixels: red, green above, blue, white below.
inline constexpr WORD kBitmap24 = 24;
inline constexpr WORD kBitmapPalette = 8;
// Its pixels are missing, its header as well.
inline constexpr WORD kBitmapCut = 99;
inline constexpr WORD kBitmapEmpty = 98;

// Icons of two by two pixels: red, nothing above, green, blue below.
inline constexpr WORD kIconPng = 201;
inline constexpr WORD kIconAlpha = 202;
// All red at 16 pixels (in 4 and in 32 bits; with few colours it is blue), all green at 32.
inline constexpr WORD kIconSizes = 210;
inline constexpr WORD kIconCut = 299;

// Links all of them into the executable, the first time it is called.
void RegisterImageResources();
