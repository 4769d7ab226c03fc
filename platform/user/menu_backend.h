// The desktop's side of popup menus. Lives on the window thread.
#pragma once

namespace platform {

class MenuBackend {
 public:
  virtual ~MenuBackend() = default;
};

}  // namespace platform
