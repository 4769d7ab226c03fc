// Where windows are. Functions for the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// On the screen.
RECT ScreenBoundsOf(const Window& window);

// From zero on, without what the scroll bars take.
RECT ClientAreaOf(const Window& window);

// Moves the window, tells the desktop and sends WM_MOVE and WM_SIZE for what has changed.
void SetWindowBounds(Window& window, const RECT& place);

// The messages alone, for a change that the desktop made.
void NotifyBoundsChange(const Window& window, const RECT& before);

// Damages what the class wants painted anew with another size; as soon as it has that.
void DamageAfterSizing(Window& window, const RECT& before);

// What becomes of the client area when a part of the window is taken or given back: WM_SIZE, and
// damage.
void NotifyClientChange(Window& window, const RECT& before);

// WM_SIZE and WM_MOVE, as a new window gets them.
void NotifyBounds(Window& window);

// Fills in what CW_USEDEFAULT leaves to the system.
RECT BoundsAsGiven(int x, int y, int width, int height);

}  // namespace platform
