// What the desktop module does for device contexts and fonts. Lives on the window thread. Lengths
// are pixels of 96 to the inch.
#pragma once

#include <memory>
#include <string>

#include "platform/gdi/canvas.h"

namespace platform {

struct TextMetrics {
  int height = 0;            // of a line
  int ascent = 0;            // from its top to the base line
  int averageCharWidth = 0;  // of the letters A to Z and a to z
};

class GraphicsBackend {
 public:
  virtual ~GraphicsBackend() = default;

  // Of one line; what MeasureText tells is what DrawText of a canvas takes.
  virtual SIZE MeasureText(const std::wstring& text, const LOGFONTW& font) = 0;
  virtual TextMetrics MetricsOf(const LOGFONTW& font) = 0;
};

}  // namespace platform
