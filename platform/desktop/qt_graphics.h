// Fonts and drawing surfaces of Qt. Lives on the window thread.
#pragma once

#include "platform/gdi/graphics_backend.h"

namespace platform {

class QtGraphics final : public GraphicsBackend {
 public:
  SIZE MeasureText(const std::wstring& text, const LOGFONTW& font) override;
  TextMetrics MetricsOf(const LOGFONTW& font) override;
  bool HasFace(const std::wstring& face) override;
  std::unique_ptr<Canvas> MakeCanvas(SIZE size) override;
  COLORREF SystemColour(int index) override;
  LOGFONTW SystemFont(SystemFontUse use) override;
};

}  // namespace platform
