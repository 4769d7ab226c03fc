// The target of drawing: a window that paints itself, an item of a menu, or a bitmap in memory.
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
  // Must outlive the style.
  const LOGFONTW& font;
  COLORREF colour = 0;
  std::optional<COLORREF> background = std::nullopt;  // null: the background is kept
  std::optional<RECT> clip = std::nullopt;            // null: not clipped
};

// How the colour drawn is combined with the pixels already there.
enum class RasterOperation { kCopy, kXor, kNotXor, kNot };

struct CheckBoxLook {
  bool isTicked = false;
  bool isEnabled = true;
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void Fill(const RECT& area, COLORREF colour) = 0;
  // Combines each pixel of the areas once, provided that the areas do not overlap.
  virtual void Combine(std::span<const RECT> areas, COLORREF colour, RasterOperation operation) = 0;
  // x and y are the upper left corner of the line of text. Control characters are as wide as
  // spaces.
  virtual void DrawText(std::wstring_view text, double x, double y, const TextStyle& style) = 0;
  // In the desktop's look. The check box fills the area, which is a square.
  virtual void DrawCheckBox(const RECT& area, const CheckBoxLook& look) = 0;
  // The image is stretched to the area and blended by its alpha.
  virtual void DrawIcon(const IconImages& icon, const RECT& area) = 0;
  virtual void DrawPicture(const Image& image, const RECT& area) = 0;
  // Copies the pixels at that position of the source. Returns false when the source cannot be read;
  // a window never can.
  virtual bool CopyFrom(Canvas& source, const RECT& area, POINT sourcePosition) = 0;
  // Null outside of the canvas, and when the canvas cannot be read.
  virtual std::optional<COLORREF> PixelAt(POINT position) = 0;
};

}  // namespace platform
