// Fonts and drawing surfaces of Qt. Lives on the window thread.
#pragma once

#include "platform/gdi/graphics_backend.h"

namespace platform {

class QtGraphics final : public GraphicsBackend {
 public:
  QtGraphics() = default;
  // Clears the font cache, which must not outlive the application.
  ~QtGraphics() override;
  QtGraphics(const QtGraphics&) = delete;
  QtGraphics& operator=(const QtGraphics&) = delete;

  SIZE MeasureText(std::wstring_view text, const LOGFONTW& font) override;
  std::size_t CountWithin(std::wstring_view text, int width, const LOGFONTW& font) override;
  TextMetrics MetricsOf(const LOGFONTW& font) override;
  bool HasFace(const std::wstring& face) override;
  std::unique_ptr<Canvas> MakeCanvas(SIZE size) override;
  COLORREF SystemColour(int index) override;
  LOGFONTW SystemFont(SystemFontUse use) override;
};

}  // namespace platform
