// The desktop module's services for device contexts and fonts. Lives on the window thread. Lengths
// are pixels of 96 to the inch.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "platform/gdi/canvas.h"

namespace platform {

// The ellipsis at the end of a line that is too long.
inline constexpr std::wstring_view kDots = L"...";

struct TextMetrics {
  int height = 0;            // of a line
  int ascent = 0;            // from its top to the base line
  int averageCharWidth = 0;  // of the letters A to Z and a to z
  int maximumCharWidth = 0;
  int dotsWidth = 0;        // of kDots
  int characterHeight = 0;  // without the internal leading
  bool isBold = false;
  bool isFixedPitch = false;
};

enum class SystemFontUse { kCaption, kMenu, kMessage };

class GraphicsBackend {
 public:
  virtual ~GraphicsBackend() = default;

  // The size of one line. Canvas::DrawText covers exactly this size.
  virtual SIZE MeasureText(std::wstring_view text, const LOGFONTW& font) = 0;
  // How many characters from the start of the line fit into that width.
  virtual std::size_t CountWithin(std::wstring_view text, int width, const LOGFONTW& font) = 0;
  virtual TextMetrics MetricsOf(const LOGFONTW& font) = 0;
  // Whether the face is installed or has a substitute of similar look.
  virtual bool HasFace(const std::wstring& face) = 0;

  // Creates a canvas in memory, black, at the screen's resolution. The canvas may outlive the
  // backend and may be destroyed on any thread.
  virtual std::unique_ptr<Canvas> MakeCanvas(SIZE size) = 0;

  // One of COLOR_SCROLLBAR to COLOR_INFOBK.
  virtual COLORREF SystemColour(int index) = 0;
  virtual LOGFONTW SystemFont(SystemFontUse use) = 0;
};

}  // namespace platform
