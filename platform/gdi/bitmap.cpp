#include "platform/gdi/bitmap.h"

namespace platform {

Canvas& Bitmap::Surface(GraphicsBackend& graphics) {
  if (surface_ == nullptr) {
    surface_ = graphics.MakeCanvas(size_);
    if (image_.has_value()) surface_->DrawPicture(*image_, {0, 0, size_.cx, size_.cy});
  }
  return *surface_;
}

HBITMAP InsertBitmap(std::shared_ptr<Bitmap> bitmap) {
  return static_cast<HBITMAP>(Handles().Insert(HandleKind::kBitmap, std::move(bitmap)));
}

std::shared_ptr<Bitmap> BitmapOf(HBITMAP bitmap) {
  return Resolve<Bitmap>(HandleKind::kBitmap, bitmap);
}

}  // namespace platform
