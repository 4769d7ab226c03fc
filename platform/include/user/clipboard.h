// The clipboard, which a program fills with text.
#pragma once

#include <windef.h>

extern "C" {

#define CF_UNICODETEXT 13u
BOOL WINAPI OpenClipboard(HWND owner);
BOOL WINAPI EmptyClipboard();
// The memory is the clipboard's from then on.
HANDLE WINAPI SetClipboardData(UINT format, HANDLE memory);
BOOL WINAPI CloseClipboard();

}  // extern "C"
