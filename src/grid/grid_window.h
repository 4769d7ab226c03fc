// The window class of the grid control ("QGGrid", grid_messages.h). A grid is a child window with
// an identifier of its own other than 0; docs/grid.md tells how it is used. Grids live on the
// thread that registered the class: their state is the process's, without locks.
#pragma once

#include <windows.h>

namespace quillgate {

// False, with the last error, when the class cannot be registered. Registering again is fine, and
// puts the state of all grids back to its initial values: grids that exist are dead from then on.
bool RegisterGridClass(HINSTANCE instance);

}  // namespace quillgate
