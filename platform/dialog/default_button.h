// Which push button of a dialog looks like the one that Enter presses, and pressing it. Used on the
// dialog's thread.
#pragma once

#include <windows.h>

namespace platform {

// Marks the push button with the keyboard, or in lack of one the dialog's default button, and no
// other.
void MarkDefaultButton(HWND dialog, HWND focus);

// As Enter does: the push button with the keyboard, else the default button, else IDOK.
void PressDefaultButton(HWND dialog, HWND focus);

// As Escape does: IDCANCEL, unless the dialog has such a button and it is disabled.
void PressCancel(HWND dialog);

}  // namespace platform
