// Fonts and drawing surfaces of Qt. Lives on the window thread.
#pragma once

#include "platform/gdi/graphics_backend.h"

namespace platform {

class QtGraphics final : public GraphicsBackend {};

}  // namespace platform
