// Popup menus of Qt. Lives on the window thread.
#pragma once

#include "platform/user/menu_backend.h"

namespace platform {

class QtMenus final : public MenuBackend {};

}  // namespace platform
