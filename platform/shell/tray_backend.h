// The desktop's side of the notification area. Lives on the window thread.
#pragma once

namespace platform {

class TrayBackend {
 public:
  virtual ~TrayBackend() = default;
};

}  // namespace platform
