// The focus and the active top-level window of each thread. On the window thread they agree with
// the desktop's, or are made to agree. For the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Activates the top-level window: sends WM_ACTIVATE to the window that was active and to this one,
// which then gets the focus if none of its children has it.
void Activate(const std::shared_ptr<Window>& window);

// Called before the window is hidden or destroyed: moves the focus from a child to its parent, and
// the activation from a top-level window to its owner.
void LeaveWindow(const Window& window);

// Takes the focus from the window or its child; no window has it then.
void DropFocusWithin(const Window& window);

// Records what the desktop reports. The window messages that follow from it are deferred, since no
// window procedure may run inside the desktop's event.
void ReportFocus(const Window& window, bool focused);
void ReportActivation(const Window& window, bool active);

}  // namespace platform
