// Popup menus of Qt. Lives on the window thread.
#pragma once

#include "platform/user/menu_backend.h"

namespace platform {

class QtMenus final : public MenuBackend {
 public:
  std::unique_ptr<ShownMenu> Show(const TrackedMenu& menu, MenuEvents& events) override;
};

}  // namespace platform
