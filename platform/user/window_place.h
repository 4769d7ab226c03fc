// Where windows are. Functions for the window's thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// On the screen.
RECT ScreenPlaceOf(const Window& window);

// Moves the window, tells the desktop and sends WM_MOVE and WM_SIZE for what has changed.
void PlaceWindow(Window& window, const RECT& place);

// The messages alone, for a change that the desktop made.
void TellPlaceChange(const Window& window, const RECT& before);

// WM_SIZE and WM_MOVE, as a new window gets them.
void TellPlace(Window& window);

// Fills in what CW_USEDEFAULT leaves to the system.
RECT PlaceAsGiven(int x, int y, int width, int height);

}  // namespace platform
