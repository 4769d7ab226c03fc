// Lets any thread use the desktop module's drawing and measuring.
#pragma once

#include <windows.h>

#include <functional>

#include "platform/gdi/graphics_backend.h"

namespace platform {

// WithGraphics and WithRunningGraphics are defined by the wiring, because this family does not know
// where windows are.
//
// Runs the work on the window thread while the caller waits. Returns false when there is no
// desktop: the work has not run, a line is in the log, and the last error is
// ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION.
bool WithGraphics(const std::function<void(GraphicsBackend&)>& work);

// The same, but starts no desktop. Returns false when none is running.
bool WithRunningGraphics(const std::function<void(GraphicsBackend&)>& work);

// The colours and fonts of the desktop once it is running, else the defaults of Windows. The index
// is one of COLOR_SCROLLBAR to COLOR_INFOBK.
COLORREF SystemColour(int index);
bool IsSystemColour(int index);
LOGFONTW SystemFont(SystemFontUse use);

}  // namespace platform
