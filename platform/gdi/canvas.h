// Where drawing ends up: a window that paints itself, an item of a menu, or a bitmap in memory.
// Implemented by the desktop module, used by device contexts. Lives on the window thread. Lengths
// are pixels of 96 to the inch; the desktop scales them to its screen.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string_view>

#include "platform/gdi/image.h"

namespace platform {

struct TextStyle {
  // Outlives the style.
  const LOGFONTW& font;
  COLORREF colour = 0;
  std::optional<COLORREF> background = std::nullopt;  // nothing: what is there already
  std::optional<RECT> clip = std::nullopt;            // nothing is drawn outside of it
};

// What becomes of the colour that is drawn and the one that is there.
enum class RasterOperation { kCopy, kXor, kNotXor, kNot };

struct CheckBoxLook {
  bool isTicked = false;
  bool isEnabled = true;
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void Fill(const RECT& area, COLORREF colour) = 0;
  // Each pixel of the areas once, provided that they do not overlap.
  virtual void Combine(std::span<const RECT> areas, COLORREF colour, RasterOperation operation) = 0;
  // The place is the upper left corner of the text's line. Control characters take room as spaces.
  virtual void DrawText(std::wstring_view text, double x, double y, const TextStyle& style) = 0;
  // As the desktop shows them, filling the area, which is a square.
  virtual void DrawCheckBox(const RECT& area, const CheckBoxLook& look) = 0;
  // Stretched to the area, blended by its alpha.
  virtual void DrawIcon(const IconImages& icon, const RECT& area) = 0;
  virtual void DrawPicture(const Image& image, const RECT& area) = 0;
  // Takes what stands at that place of the other canvas; false when that one cannot be read, as it
  // is with windows.
  virtual bool CopyFrom(Canvas& source, const RECT& area, POINT sourcePosition) = 0;
  // Nothing outside of the canvas, and on one that cannot be read.
  virtual std::optional<COLORREF> PixelAt(POINT place) = 0;
};

}  // namespace platform
