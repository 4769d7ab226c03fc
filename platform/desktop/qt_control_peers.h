// Controls as Qt widgets. Lives on the window thread.
#pragma once

#include "platform/controls/control_peers.h"

namespace platform {

class QtControlPeers final : public ControlPeers {};

}  // namespace platform
