// Window classes and windows.
#pragma once

#include <windef.h>

extern "C" {

using WNDPROC = LRESULT(CALLBACK*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
using TIMERPROC = void(CALLBACK*)(HWND window, UINT message, UINT_PTR id, DWORD tick);

struct WNDCLASSEXW {
  UINT cbSize;
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  LPCWSTR lpszMenuName;
  LPCWSTR lpszClassName;
  HICON hIconSm;
};
struct WNDCLASSW {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  LPCWSTR lpszMenuName;
  LPCWSTR lpszClassName;
};
struct CREATESTRUCTW {
  LPVOID lpCreateParams;
  HINSTANCE hInstance;
  HMENU hMenu;
  HWND hwndParent;
  int cy;
  int cx;
  int y;
  int x;
  LONG style;
  LPCWSTR lpszName;
  LPCWSTR lpszClass;
  DWORD dwExStyle;
};
using LPCREATESTRUCTW = CREATESTRUCTW*;

#define WS_OVERLAPPED 0x00000000u
#define WS_POPUP 0x80000000u
#define WS_CHILD 0x40000000u
#define WS_VISIBLE 0x10000000u
#define WS_DISABLED 0x08000000u
#define WS_CAPTION 0x00C00000u
#define WS_BORDER 0x00800000u
#define WS_VSCROLL 0x00200000u
#define WS_HSCROLL 0x00100000u
#define WS_SYSMENU 0x00080000u
#define WS_GROUP 0x00020000u
#define WS_TABSTOP 0x00010000u
#define CW_USEDEFAULT (static_cast<int>(0x80000000u))

ATOM WINAPI RegisterClassExW(const WNDCLASSEXW* windowClass);
ATOM WINAPI RegisterClassW(const WNDCLASSW* windowClass);
BOOL WINAPI UnregisterClassW(LPCWSTR className, HINSTANCE instance);
BOOL WINAPI GetClassInfoW(HINSTANCE instance, LPCWSTR className, WNDCLASSW* windowClass);
HWND WINAPI CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style,
                            int x, int y, int width, int height, HWND parent, HMENU menu,
                            HINSTANCE instance, LPVOID parameter);
BOOL WINAPI DestroyWindow(HWND window);
BOOL WINAPI IsWindow(HWND window);
LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD processId);

#define GWLP_WNDPROC (-4)
#define GWLP_USERDATA (-21)
LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index);
LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value);

#define HWND_MESSAGE (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-3)))

}  // extern "C"
