// Bounds and client areas of windows. For the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// In screen coordinates.
RECT ScreenBoundsOf(const Window& window);

// In client coordinates, so left and top are 0. Scroll bars are not included.
RECT ClientAreaOf(const Window& window);

// Moves and sizes the window and its peer, and sends WM_MOVE and WM_SIZE for what has changed.
void SetWindowBounds(Window& window, const RECT& bounds);

// Sends WM_MOVE and WM_SIZE only, for a change that the desktop made.
void NotifyBoundsChange(const Window& window, const RECT& before);

// Invalidates the client area if the class redraws at a change of size (CS_HREDRAW, CS_VREDRAW).
// Called as soon as the window has its new size.
void DamageAfterSizing(Window& window, const RECT& before);

// For a client area that a scroll bar has made smaller or larger: invalidates it as
// DamageAfterSizing does, and sends WM_SIZE.
void NotifyClientChange(Window& window, const RECT& before);

// Sends WM_SIZE and WM_MOVE, as a new window gets them.
void NotifyBounds(Window& window);

// The bounds of a new window, with values for CW_USEDEFAULT.
RECT BoundsAsGiven(int x, int y, int width, int height);

}  // namespace platform
