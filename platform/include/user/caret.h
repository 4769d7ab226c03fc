// The caret of a thread: where what is typed goes.
#pragma once

#include <windef.h>

extern "C" {

BOOL WINAPI CreateCaret(HWND window, HBITMAP bitmap, int width, int height);
BOOL WINAPI DestroyCaret();
BOOL WINAPI ShowCaret(HWND window);
BOOL WINAPI HideCaret(HWND window);
BOOL WINAPI SetCaretPos(int x, int y);
BOOL WINAPI GetCaretPos(LPPOINT place);

}  // extern "C"
