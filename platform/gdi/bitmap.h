// Bitmaps: a picture from a resource until somebody draws on it, from then on a canvas of the
// desktop module. A bitmap is used by one thread at a time.
#pragma once

#include "platform/gdi/graphics_backend.h"
#include "platform/gdi/image.h"
#include "platform/gdi/selectable.h"

namespace platform {

class Bitmap final : public Selectable {
 public:
  explicit Bitmap(Image picture);
  // A black one, to be drawn on.
  explicit Bitmap(SIZE size) : size_(size) {}

  SIZE Size() const { return size_; }
  // What to draw on, made when it is first asked for. Window thread.
  Canvas& Surface(GraphicsBackend& graphics);
  // The picture as it stands, at 96 pixels to the inch; null when it cannot be read.
  std::shared_ptr<const Image> Picture() const;

 private:
  std::shared_ptr<const Image> PictureOfSurface() const;

  SIZE size_;
  std::shared_ptr<const Image> picture_;
  std::unique_ptr<Canvas> surface_;
};

HBITMAP InsertBitmap(std::shared_ptr<Bitmap> bitmap);

}  // namespace platform
