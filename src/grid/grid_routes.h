// Which member of a grid answers which message of its window: the place where wParam and lParam
// are decoded. On the window's thread.
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

// Null: the message is left to the system. WM_CREATE and WM_DESTROY have no route, as there is no
// grid yet, or none any more.
GridRoute RouteOf(UINT message);

}  // namespace quillgate
