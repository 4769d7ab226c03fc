// The desktop's notification area, seen from any thread: what the layer accepts is carried to the
// window thread in order, and nobody waits for it.
#pragma once

#include <functional>

#include "platform/shell/tray_backend.h"

namespace platform {

enum class TrayPresence {
  kNoDesktop,
  kNoArea,  // a desktop whose area is not there (yet)
  kArea,
};

// As far as is known: until the window thread has looked for the first time, an area is taken to be
// there on every desktop.
TrayPresence DesktopTrayPresence();

// Runs the work on the window thread, unless the area has changed or gone by then.
void WithDesktopTray(std::function<void(TrayBackend&)> work);

}  // namespace platform
