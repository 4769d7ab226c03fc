// Message boxes.
#pragma once

#include <windef.h>

extern "C" {

#define MB_OK 0x00000000u
#define MB_OKCANCEL 0x00000001u
#define MB_YESNO 0x00000004u
#define MB_ICONERROR 0x00000010u
#define MB_ICONQUESTION 0x00000020u
#define MB_ICONEXCLAMATION 0x00000030u
#define MB_ICONINFORMATION 0x00000040u
#define IDOK 1
#define IDCANCEL 2
#define IDYES 6
#define IDNO 7
int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

}  // extern "C"
