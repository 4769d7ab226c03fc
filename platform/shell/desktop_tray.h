// The desktop's notification area, for any thread: calls are deferred to the window thread in
// order, and the caller does not wait for them.
#pragma once

#include <functional>

#include "platform/shell/tray_backend.h"

namespace platform {

enum class TrayPresence {
  kNoDesktop,
  kNoArea,  // a desktop without an area, or not yet with one
  kArea,
};

// The last reported state. Until the window thread has checked for the first time, every desktop is
// taken to have an area.
TrayPresence DesktopTrayPresence();

// Runs the work on the window thread, unless the area has been replaced or removed by then.
void WithDesktopTray(std::function<void(TrayBackend&)> work);

}  // namespace platform
