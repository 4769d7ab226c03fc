// WM_PAINT. Used on the window thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Lets the window's procedure paint the damaged part of the client area on the canvas. It may end
// the window. Exposed: what stood there is lost.
void PaintWindow(const std::shared_ptr<Window>& window, Canvas& canvas, const RECT& damaged,
                 bool exposed);

// The area is painted again, soon.
void Damage(Window& window, const RECT& area, bool erase);

// Fills the client area with the brush of the window's class; false without one.
bool EraseBackground(const Window& window, HDC context);

}  // namespace platform
