// A bitmap holds an image of a resource until it is drawn on or shown for the first time. From then
// on its pixels are a canvas of the desktop module. A bitmap is used by one thread at a time.
#pragma once

#include <optional>

#include "platform/gdi/graphics_backend.h"
#include "platform/gdi/image.h"
#include "platform/gdi/selectable.h"

namespace platform {

class Bitmap final : public Selectable {
 public:
  // The image is stretched to the size. A bitmap without an image is black.
  explicit Bitmap(SIZE size, std::optional<Image> image = std::nullopt)
      : size_(size), image_(image) {}

  SIZE Size() const { return size_; }
  // The canvas to draw on and to show. It is created by the first call. Window thread.
  Canvas& Surface(GraphicsBackend& graphics);

 private:
  SIZE size_;
  std::optional<Image> image_;
  std::unique_ptr<Canvas> surface_;
};

HBITMAP InsertBitmap(std::shared_ptr<Bitmap> bitmap);
// Null when the handle is not live, or of another kind.
std::shared_ptr<Bitmap> BitmapOf(HBITMAP bitmap);

}  // namespace platform
