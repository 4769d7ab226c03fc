// Canvases of Qt: whatever a painter paints on (a widget or a menu inside its paint event), and
// bitmaps in memory. Used on the window thread.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include "platform/gdi/canvas.h"

namespace platform {

// Draws with a painter of the caller's, whose origin is that of the window or item, for as long as
// that is active. Its clipping holds; whatever else is set on it is left as it was, but for the
// pen.
class QtCanvas : public Canvas {
 public:
  // The pixels are those of the image that the painter paints on, to be read back; null: they
  // cannot be read.
  explicit QtCanvas(QPainter& painter, const QImage* pixels = nullptr)
      : painter_(painter), pixels_(pixels) {}

  void Fill(const RECT& area, COLORREF colour) override;
  void Combine(std::span<const RECT> areas, COLORREF colour, RasterOperation operation) override;
  void DrawText(std::wstring_view text, double x, double y, const TextStyle& style) override;
  void DrawCheckBox(const RECT& area, const CheckBoxLook& look) override;
  void DrawIcon(const IconImages& icon, const RECT& area) override;
  void DrawPicture(const Image& image, const RECT& area) override;
  bool CopyFrom(Canvas& source, const RECT& area, POINT sourcePosition) override;
  // Nothing outside of the clipping.
  std::optional<COLORREF> PixelAt(POINT place) override;

  const QImage* Pixels() const { return pixels_; }

 private:
  void UsePen(COLORREF colour);

  QPainter& painter_;
  const QImage* pixels_;
};

// What stands on a canvas; null when that cannot be read.
const QImage* PixelsOf(const Canvas& canvas);
// The icon at its nominal size on a screen of so many pixels for one of the layer's.
QPixmap PixmapOf(const IconImages& icon, double pixelRatio);

// A picture with a painter on it that stays active, since beginning takes longer than most drawing.
struct QtPaintedImage {
  QtPaintedImage(SIZE size, double pixelRatio);

  QImage pixels;
  QPainter painter;
};

// Pixels in memory, as many to the inch as the screen has, so that text on them is as sharp as on a
// window. Black at first.
class QtMemoryCanvas final : private QtPaintedImage, public QtCanvas {
 public:
  QtMemoryCanvas(SIZE size, double pixelRatio)
      : QtPaintedImage(size, pixelRatio), QtCanvas(painter, &pixels) {}
};

}  // namespace platform
