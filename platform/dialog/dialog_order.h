// The order in which the keyboard reaches the controls of a dialog: that of their creation, with
// the controls of a page inside the dialog in the page's position. For the dialog's thread.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "platform/user/window.h"

namespace platform {

using WindowPointer = std::shared_ptr<Window>;

// The controls of the dialog and of the pages inside it. Hidden and disabled controls are included;
// the controls of hidden or disabled pages are not.
std::vector<WindowPointer> ControlsOf(HWND dialog);

// Whether the control itself is shown and enabled.
bool TakesInput(const Window& control);

// The control that Tab (with `forward` false: Shift+Tab) moves the focus to from `control`,
// wrapping around. The first, or last, when `control` is null or not in the dialog. Null when no
// control is a tab stop.
WindowPointer NextTabStop(HWND dialog, HWND control, bool forward);

// The control that an arrow key moves the focus to, inside the group of `control`. A group reaches
// from a control with WS_GROUP to the one before the next such control. Null when `control` is not
// in the dialog. This function and NextTabStop may be called inside an event of the desktop.
WindowPointer NextInGroup(HWND dialog, HWND control, bool forward);

// The reply of the window to WM_GETDLGCODE.
LRESULT DialogCodeOf(HWND window);

// The reply to WM_GETDLGCODE of a control of a system class; 0 for any other window, whose
// procedure is not called. May be called inside an event of the desktop.
LRESULT ControlCodeOf(HWND window);

}  // namespace platform
