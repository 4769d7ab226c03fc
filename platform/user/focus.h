// Which window of a thread has the keyboard and which top-level window is active. Each thread has
// its own answer; on the window thread the desktop's agrees, or follows. Functions for the window's
// thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Makes the top-level window the active one: WM_ACTIVATE to the one before and to this one, which
// then has the keyboard, if none of its children has.
void Activate(const std::shared_ptr<Window>& window);

// The window is about to be hidden or destroyed: the keyboard goes to a child's parent, the
// activation to a top-level window's owner.
void LeaveWindow(const Window& window);

// Takes the keyboard from the window and its children, for nobody else.
void DropFocusWithin(const Window& window);

// What the desktop says happened; looked into later, when window procedures may run.
void ReportFocus(const Window& window, bool focused);
void ReportActivation(const Window& window, bool active);

}  // namespace platform
