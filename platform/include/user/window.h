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

#define CS_VREDRAW 0x0001u
#define CS_HREDRAW 0x0002u
#define CS_DBLCLKS 0x0008u

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

#define GWLP_WNDPROC (-4)
#define GWLP_ID (-12)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWLP_USERDATA (-21)
LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index);
LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
struct STYLESTRUCT {
  DWORD styleOld;
  DWORD styleNew;
};

HWND WINAPI GetParent(HWND window);
BOOL WINAPI IsChild(HWND parent, HWND window);
HWND WINAPI GetDesktopWindow();

BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text);
int WINAPI GetWindowTextW(HWND window, LPWSTR text, int capacity);
int WINAPI GetWindowTextLengthW(HWND window);

#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
BOOL WINAPI ShowWindow(HWND window, int command);
BOOL WINAPI IsWindowVisible(HWND window);
BOOL WINAPI EnableWindow(HWND window, BOOL enable);
BOOL WINAPI IsWindowEnabled(HWND window);

HWND WINAPI SetFocus(HWND window);
HWND WINAPI GetFocus();
HWND WINAPI GetActiveWindow();
BOOL WINAPI SetForegroundWindow(HWND window);

#define HWND_TOP (static_cast<HWND>(nullptr))
#define SWP_NOSIZE 0x0001u
#define SWP_NOMOVE 0x0002u
#define SWP_NOZORDER 0x0004u
#define SWP_NOACTIVATE 0x0010u
#define SWP_SHOWWINDOW 0x0040u
#define SWP_HIDEWINDOW 0x0080u
BOOL WINAPI SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height,
                         UINT flags);
BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BOOL WINAPI GetWindowRect(HWND window, LPRECT place);
BOOL WINAPI GetClientRect(HWND window, LPRECT area);
BOOL WINAPI ScreenToClient(HWND window, LPPOINT point);
BOOL WINAPI ClientToScreen(HWND window, LPPOINT point);

BOOL WINAPI GetCursorPos(LPPOINT place);
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
#define SM_CXVSCROLL 2
#define SM_CYHSCROLL 3
#define SM_SWAPBUTTON 23
#define SM_CXSMICON 49
#define SM_CYSMICON 50
int WINAPI GetSystemMetrics(int index);

#define HWND_MESSAGE (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-3)))

}  // extern "C"
