// The window class of the grid control ("QGGrid", grid_messages.h). A grid is a child window with a
// unique identifier other than 0; docs/grid.md describes its use. Grids live on the thread that
// registered the class: their state is shared by the process, without locks.
#pragma once

#include <windows.h>

namespace quillgate {

// False, with the last error set, when the class cannot be registered. May be called again, which
// resets the state of all grids: existing grids stop working.
bool RegisterGridClass(HINSTANCE instance);

}  // namespace quillgate
