// Parents, owners and the desktop window. For the window's thread, where nothing else is said.
#pragma once

#include "platform/user/window.h"

namespace platform {

// The parent of a child, or the owner of a top-level window; null without either.
std::shared_ptr<Window> ParentOf(const Window& window);

// Whether the window is the ancestor or inside it at any depth; owners do not count.
bool IsWithin(const Window& window, HWND ancestor);

// The window itself if it is a top-level one, else the top-level window that it is in.
std::shared_ptr<Window> TopLevelOf(const std::shared_ptr<Window>& window);

// Whether it is the window of GetDesktopWindow: without parent or thread, never shown. Any thread.
bool IsDesktopWindow(HWND window);

}  // namespace platform
