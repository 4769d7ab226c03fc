// Icons in the notification area by Qt. Lives on the window thread.
#pragma once

#include "platform/shell/tray_backend.h"

namespace platform {

class QtTray final : public TrayBackend {};

}  // namespace platform
