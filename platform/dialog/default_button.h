// Which push button of a dialog looks like the one that Enter presses, and pressing it. Used on the
// dialog's thread.
#pragma once

#include <windows.h>

namespace platform {

// After the dialog or its user moved the keyboard: marks the push button with it, or in lack of one
// the dialog's default button, and no other.
void MarkDefaultButton(HWND dialog, HWND focus);

// As Enter does: the button with the keyboard if it is marked, else the default button, else IDOK.
void PressDefaultButton(HWND dialog, HWND focus);

// As Escape does: IDCANCEL, unless the dialog has such a button and it is disabled.
void PressCancel(HWND dialog);

}  // namespace platform
