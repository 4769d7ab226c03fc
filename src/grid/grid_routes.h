// Maps each message of the window to a member of a grid and decodes wParam and lParam. Used on the
// window's thread.
#pragma once

#include <windows.h>

#include "grid/grid.h"
#include "grid/window_grid_system.h"

namespace quillgate {

struct GridCall {
  HWND window;
  WPARAM wParam;
  LPARAM lParam;
  GridSlot& slot;
  WindowGridSystem& system;
  Grid& grid;
};

using GridRoute = LRESULT (*)(const GridCall& call);

// Null: the message is passed to DefWindowProcW. WM_CREATE and WM_DESTROY have no route, since they
// create and destroy the grid.
GridRoute RouteOf(UINT message);

}  // namespace quillgate
