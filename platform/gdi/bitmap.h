// Bitmaps: a picture from a resource until somebody draws on it or shows it, from then on a canvas
// of the desktop module. A bitmap is used by one thread at a time.
#pragma once

#include <optional>

#include "platform/gdi/graphics_backend.h"
#include "platform/gdi/image.h"
#include "platform/gdi/selectable.h"

namespace platform {

class Bitmap final : public Selectable {
 public:
  // Of the picture, made larger or smaller to that size; without one it is black.
  explicit Bitmap(SIZE size, std::optional<Image> picture = std::nullopt)
      : size_(size), picture_(picture) {}

  SIZE Size() const { return size_; }
  // What to draw on and to show, made when it is first asked for. Window thread.
  Canvas& Surface(GraphicsBackend& graphics);

 private:
  SIZE size_;
  std::optional<Image> picture_;
  std::unique_ptr<Canvas> surface_;
};

HBITMAP InsertBitmap(std::shared_ptr<Bitmap> bitmap);
// Null when the handle is not live, or of another kind.
std::shared_ptr<Bitmap> BitmapOf(HBITMAP bitmap);

}  // namespace platform
