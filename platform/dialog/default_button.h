// The default push button of a dialog: marking it and pressing it. For the dialog's thread.
#pragma once

#include <windows.h>

namespace platform {

// Called after the focus has moved. Gives the default look to the push button with the focus, else
// to the dialog's default button, and to no other.
void MarkDefaultButton(HWND dialog, HWND focus);

// Does what Enter does: presses the button with the focus if it has the default look, else the
// default button, else IDOK.
void PressDefaultButton(HWND dialog, HWND focus);

// Does what Escape does: IDCANCEL, unless the dialog has such a button and it is disabled.
void PressCancel(HWND dialog);

}  // namespace platform
