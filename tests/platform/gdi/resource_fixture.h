// Icons and bitmaps as resources, put together byte by byte.
#pragma once

#include <windows.h>

// Bitmaps of two by two pixels: red, green above, blue, white below. One per number of bits.
inline constexpr WORD kBitmap24 = 24;
inline constexpr WORD kBitmap32 = 32;
inline constexpr WORD kBitmap8 = 8;
inline constexpr WORD kBitmap4 = 4;
inline constexpr WORD kBitmapFromTop = 25;
// Black and yellow above, yellow and black below.
inline constexpr WORD kBitmap1 = 1;
inline constexpr WORD kBitmapCut = 99;

// Icons of two by two pixels: red, nothing above, green, blue below. One per format.
inline constexpr WORD kIconPng = 201;
inline constexpr WORD kIconAlpha = 202;
inline constexpr WORD kIconMask32 = 203;
inline constexpr WORD kIconMask24 = 204;
inline constexpr WORD kIconMask8 = 205;
inline constexpr WORD kIconMask4 = 206;
// Black and nothing above, yellow and black below.
inline constexpr WORD kIconMask1 = 207;
// All red at 16 pixels (in 4 and in 32 bits; with few colours it is blue), all green at 32.
inline constexpr WORD kIconSizes = 210;
inline constexpr WORD kIconCut = 299;

// Links all of them into the executable, the first time it is called.
void RegisterImageResources();
