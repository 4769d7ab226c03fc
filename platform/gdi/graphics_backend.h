// What the desktop module does for device contexts and fonts. Lives on the window thread. Lengths
// are pixels of 96 to the inch.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/gdi/canvas.h"

namespace platform {

// What a line that is too long ends in.
inline constexpr std::wstring_view kDots = L"...";

struct TextMetrics {
  int height = 0;            // of a line
  int ascent = 0;            // from its top to the base line
  int averageCharWidth = 0;  // of the letters A to Z and a to z
  int maximumCharWidth = 0;
  int dotsWidth = 0;        // of kDots
  int characterHeight = 0;  // without the room that a line leaves for accents
  bool isBold = false;
  bool isFixedPitch = false;
};

enum class SystemFontUse { kCaption, kMenu, kMessage };

class GraphicsBackend {
 public:
  virtual ~GraphicsBackend() = default;

  // Of one line; what MeasureText tells is what DrawText of a canvas takes.
  virtual SIZE MeasureText(std::wstring_view text, const LOGFONTW& font) = 0;
  // How many of the line's first characters take no more than that width.
  virtual std::size_t CountWithin(std::wstring_view text, int width, const LOGFONTW& font) = 0;
  virtual TextMetrics MetricsOf(const LOGFONTW& font) = 0;
  // Whether text in that face looks like it: it is installed, or another one is known to stand in.
  virtual bool HasFace(const std::wstring& face) = 0;

  // Pixels in memory, black, as fine as the screen's. They may outlive the backend, and end on any
  // thread.
  virtual std::unique_ptr<Canvas> MakeCanvas(SIZE size) = 0;

  // One of COLOR_SCROLLBAR to COLOR_INFOBK.
  virtual COLORREF SystemColour(int index) = 0;
  virtual LOGFONTW SystemFont(SystemFontUse use) = 0;
};

}  // namespace platform
