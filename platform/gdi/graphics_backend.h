// What the desktop module does for device contexts and fonts. Lives on the window thread.
#pragma once

#include <memory>

#include "platform/gdi/canvas.h"

namespace platform {

class GraphicsBackend {
 public:
  virtual ~GraphicsBackend() = default;
};

}  // namespace platform
