// The shape of the pointer over the calling thread's windows.
#pragma once

#include <windows.h>

namespace platform {

// The pointer is in the client area of that window, where the mouse did that: WM_SETCURSOR, and the
// shape as it is after that.
void AskForCursor(HWND window, UINT mouseMessage);

}  // namespace platform
