// Fonts and drawing surfaces of Qt. Lives on the window thread.
#pragma once

#include "platform/gdi/graphics_backend.h"

namespace platform {

class QtGraphics final : public GraphicsBackend {
 public:
  SIZE MeasureText(const std::wstring& text, const LOGFONTW& font) override;
  TextMetrics MetricsOf(const LOGFONTW& font) override;
};

}  // namespace platform
