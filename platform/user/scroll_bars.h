// The scroll bars of windows of registered classes. A bar is shown when its bit of the window's
// style (WS_HSCROLL, WS_VSCROLL) is set; what else is known of it stays while it is hidden.
// Functions for the window's thread.
#pragma once

#include <windows.h>

#include <array>

namespace platform {

class Window;

// As documented for a standard scroll bar before anything is set.
struct ScrollBar {
  int minimum = 0;
  int maximum = 100;
  int page = 0;
  int position = 0;
  // Where the thumb was when it was last dragged.
  int tracked = 0;
};

// By SB_HORZ and SB_VERT.
using ScrollBarPair = std::array<ScrollBar, 2>;

// How much of the window its bars take, at the right and at the bottom.
SIZE TakenByScrollBars(const Window& window);

// Tells the desktop of both bars of a new window.
void ShowFirstScrollBars(Window& window);

}  // namespace platform
