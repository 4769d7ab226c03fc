// Where drawing ends up: a window that paints itself, an item of a menu, or a bitmap in memory.
// Implemented by the desktop module, used by device contexts. Lives on the window thread. Lengths
// are pixels of 96 to the inch; the desktop scales them to its screen.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "platform/gdi/image.h"

namespace platform {

struct TextStyle {
  LOGFONTW font{};
  COLORREF colour = 0;
  std::optional<COLORREF> background;  // nothing: what is there already
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void Fill(const RECT& area, COLORREF colour) = 0;
  // The place is the upper left corner of the text's line.
  virtual void DrawText(const std::wstring& text, double x, double y, const TextStyle& style) = 0;
  // Stretched to the area, blended by its alpha.
  virtual void DrawIcon(const IconImages& icon, const RECT& area) = 0;
  virtual void DrawPicture(const Image& image, const RECT& area) = 0;
  // Takes what stands at that place of the other canvas; false when that one cannot be read, as it
  // is with windows.
  virtual bool CopyFrom(Canvas& source, const RECT& area, POINT sourcePlace) = 0;
  // Nothing outside of the canvas, and on one that cannot be read.
  virtual std::optional<COLORREF> PixelAt(POINT place) = 0;
};

}  // namespace platform
