// The cursor's shape over the calling thread's windows.
#pragma once

#include <windows.h>

namespace platform {

// Sends WM_SETCURSOR to the window whose client area the cursor is in, with the mouse message that
// caused it, and shows the shape that the window chose.
void AskForCursor(HWND window, UINT mouseMessage);

}  // namespace platform
