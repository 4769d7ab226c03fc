// The order of a dialog's controls for the keyboard: that of their creation, with the controls of a
// page inside the dialog in the place of the page. Used on the dialog's thread.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "platform/user/window.h"

namespace platform {

using WindowPointer = std::shared_ptr<Window>;

// The controls of the dialog and of the pages inside it that are shown and enabled; hidden and
// disabled controls are among them, those of hidden or disabled pages are not.
std::vector<WindowPointer> ControlsOf(HWND dialog);

// Shown and enabled.
bool TakesInput(const Window& control);

// The control that Tab (Shift+Tab for `forward` false) goes to from that one, round and round; the
// first, or last, when the control is null or none of the dialog's. Null when there is none.
WindowPointer NextTabStop(HWND dialog, HWND control, bool forward);

// The same for the arrow keys, inside the group of the control: from a control with WS_GROUP to the
// one before the next of these. Null when the control is none of the dialog's. Both may be called
// inside an event of the desktop.
WindowPointer NextInGroup(HWND dialog, HWND control, bool forward);

// What the window answers to WM_GETDLGCODE.
LRESULT DialogCodeOf(HWND window);

// The same of a control of the system; 0 of any other window, whose procedure is not called. May be
// used inside an event of the desktop.
LRESULT ControlCodeOf(HWND window);

}  // namespace platform
