// The desktop's side of the controls. Lives on the window thread.
#pragma once

namespace platform {

class ControlPeers {
 public:
  virtual ~ControlPeers() = default;
};

}  // namespace platform
