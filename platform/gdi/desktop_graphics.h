// The way from any thread to what the desktop module draws and measures with.
#pragma once

#include <windows.h>

#include <functional>

#include "platform/gdi/graphics_backend.h"

namespace platform {

// Both are defined by the wiring, for this family does not know where windows are.
// Runs the work on the window thread while the caller waits. False, with a line in the log and
// ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION as the last error, when there is no desktop; nothing has
// run then.
bool WithGraphics(const std::function<void(GraphicsBackend&)>& work);

// The same on a desktop that is there already: false when there is none yet.
bool WithRunningGraphics(const std::function<void(GraphicsBackend&)>& work);

// As long as there are windows on a desktop, from that; before, and without one, what Windows shows
// when nobody has changed it. The index is one of COLOR_SCROLLBAR to COLOR_INFOBK.
COLORREF SystemColour(int index);
bool IsSystemColour(int index);
LOGFONTW SystemFont(SystemFontUse use);

}  // namespace platform
