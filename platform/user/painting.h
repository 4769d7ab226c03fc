// WM_PAINT. Used on the window thread.
#pragma once

#include "platform/user/window.h"

namespace platform {

// Sends WM_PAINT for the damaged part of the client area, with the canvas to draw on. The window's
// procedure may destroy the window. `exposed`: what the area showed is lost, so the background is
// to be erased.
void PaintWindow(const std::shared_ptr<Window>& window, Canvas& canvas, const RECT& damaged,
                 bool exposed);

// Invalidates the area; `erase` as in InvalidateRect.
void Damage(Window& window, const RECT& area, bool erase);

// Fills the client area with the background brush of the window's class; false when the class has
// none.
bool EraseBackground(const Window& window, HDC context);

}  // namespace platform
