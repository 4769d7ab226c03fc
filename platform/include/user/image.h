// Icons and bitmaps from resources.
#pragma once

#include <windef.h>

extern "C" {

#define IMAGE_BITMAP 0
#define IMAGE_ICON 1
#define LR_DEFAULTCOLOR 0x00000000u
#define LR_DEFAULTSIZE 0x00000040u
#define LR_SHARED 0x00008000u
HANDLE WINAPI LoadImageW(HINSTANCE instance, LPCWSTR name, UINT type, int width, int height,
                         UINT flags);
HICON WINAPI LoadIconW(HINSTANCE instance, LPCWSTR name);
HBITMAP WINAPI LoadBitmapW(HINSTANCE instance, LPCWSTR name);
BOOL WINAPI DestroyIcon(HICON icon);

#define DI_MASK 0x0001u
#define DI_NORMAL 0x0003u
#define DI_DEFAULTSIZE 0x0008u
BOOL WINAPI DrawIconEx(HDC context, int x, int y, HICON icon, int width, int height, UINT step,
                       HBRUSH brush, UINT flags);

}  // extern "C"
