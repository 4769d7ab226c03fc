// Drawing on what a window shows, outside of its WM_PAINT. Any thread; the work runs on the
// window's own.
#pragma once

#include <functional>
#include <memory>

#include "platform/gdi/canvas.h"

namespace platform {

class Window;

enum class WindowDrawing {
  kDrawn,      // or clipped away, as it is with a hidden window
  kNoWindow,   // it has ended; ERROR_INVALID_HANDLE is the last error
  kNoSurface,  // a dialog, a control of the system or a window without a desktop
};

WindowDrawing DrawOnWindow(const std::shared_ptr<Window>& window,
                           const std::function<void(Canvas&)>& work);

}  // namespace platform
