// The scroll bars of windows of registered classes. A bar is shown when its style bit (WS_HSCROLL,
// WS_VSCROLL) is set; a hidden bar keeps its range, page and position. For the window's thread.
#pragma once

#include <windows.h>

#include <array>

namespace platform {

class Window;

// The initial values are those documented for a standard scroll bar.
struct ScrollBar {
  int minimum = 0;
  int maximum = 100;
  int page = 0;
  int position = 0;
  // The position of the thumb when it was last dragged.
  int tracked = 0;
};

// Indexed by SB_HORZ and SB_VERT.
using ScrollBarPair = std::array<ScrollBar, 2>;

// The width that the vertical bar takes and the height that the horizontal one takes; 0 for a
// hidden bar.
SIZE TakenByScrollBars(const Window& window);

// Shows both bars of a new window on the desktop.
void ShowFirstScrollBars(Window& window);

}  // namespace platform
