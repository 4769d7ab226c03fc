// Canvases of Qt: one for any active painter (of a widget or a menu during its paint event), and
// bitmaps in memory. Used on the window thread.
#pragma once

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include "platform/gdi/canvas.h"

namespace platform {

// Draws with the caller's painter, which must be active. Its origin is that of the window or item.
// The painter's clipping is respected. All its other settings are left as they were, except the
// pen.
class QtCanvas : public Canvas {
 public:
  // `pixels` is the image that the painter paints on, for reading pixels back. Null: they cannot be
  // read.
  explicit QtCanvas(QPainter& painter, const QImage* pixels = nullptr)
      : painter_(painter), pixels_(pixels) {}

  void Fill(const RECT& area, COLORREF colour) override;
  void Combine(std::span<const RECT> areas, COLORREF colour, RasterOperation operation) override;
  void DrawText(std::wstring_view text, double x, double y, const TextStyle& style) override;
  void DrawCheckBox(const RECT& area, const CheckBoxLook& look) override;
  void DrawIcon(const IconImages& icon, const RECT& area) override;
  void DrawPicture(const Image& image, const RECT& area) override;
  bool CopyFrom(Canvas& source, const RECT& area, POINT sourcePosition) override;
  // Null outside of the clipping, too.
  std::optional<COLORREF> PixelAt(POINT position) override;

  const QImage* Pixels() const { return pixels_; }

 private:
  void UsePen(COLORREF colour);

  QPainter& painter_;
  const QImage* pixels_;
};

// The pixels of a canvas; null when they cannot be read.
const QImage* PixelsOf(const Canvas& canvas);
// The icon at its nominal size. The ratio is screen pixels per pixel of the layer.
QPixmap PixmapOf(const IconImages& icon, double pixelRatio);

// An image with a painter that stays active, because QPainter::begin takes longer than most
// drawing.
struct QtPaintedImage {
  QtPaintedImage(SIZE size, double pixelRatio);

  QImage pixels;
  QPainter painter;
};

// A bitmap in memory at the screen's resolution, so that text on it is as sharp as in a window.
// Black at first.
class QtMemoryCanvas final : private QtPaintedImage, public QtCanvas {
 public:
  QtMemoryCanvas(SIZE size, double pixelRatio)
      : QtPaintedImage(size, pixelRatio), QtCanvas(painter, &pixels) {}
};

}  // namespace platform
