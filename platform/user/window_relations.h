// Parents, owners and the window that stands for the screen. Functions for the window's thread,
// unless they say otherwise.
#pragma once

#include "platform/user/window.h"

namespace platform {

// The parent of a child, or the owner of a top-level window; null without either.
std::shared_ptr<Window> ParentOf(const Window& window);

// The window itself, or one that it is in at whatever depth; owners do not count.
bool IsWithin(const Window& window, HWND ancestor);

// The top-level window that the window is or is in.
std::shared_ptr<Window> TopLevelOf(const std::shared_ptr<Window>& window);

// The screen's own window: nobody's child, of no thread, never shown. Any thread.
bool IsDesktopWindow(HWND window);

}  // namespace platform
