#include "platform/gdi/bitmap.h"

#include "platform/gdi/desktop_graphics.h"

namespace platform {
namespace {

// The desktop's screen has colours of eight bits and no alpha.
constexpr std::uint32_t kOpaque = 0xFF000000;

std::uint32_t PixelOf(COLORREF colour) {
  return kOpaque | static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
         static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
}

}  // namespace

Bitmap::Bitmap(Image picture)
    : size_{picture.width, picture.height},
      picture_(std::make_shared<const Image>(std::move(picture))) {}

Canvas& Bitmap::Surface(GraphicsBackend& graphics) {
  if (surface_ == nullptr) {
    surface_ = graphics.MakeCanvas(size_);
    if (picture_ != nullptr) surface_->DrawPicture(*picture_, {0, 0, size_.cx, size_.cy});
    picture_.reset();
  }
  return *surface_;
}

std::shared_ptr<const Image> Bitmap::Picture() const {
  if (picture_ != nullptr) return picture_;
  if (surface_ != nullptr) return PictureOfSurface();
  const auto pixels = static_cast<std::size_t>(size_.cx) * static_cast<std::size_t>(size_.cy);
  return std::make_shared<const Image>(
      Image{size_.cx, size_.cy, std::vector<std::uint32_t>(pixels, kOpaque)});
}

std::shared_ptr<const Image> Bitmap::PictureOfSurface() const {
  auto image = std::make_shared<Image>(Image{size_.cx, size_.cy, {}});
  const bool read = WithGraphics([&](GraphicsBackend&) {
    for (LONG y = 0; y < size_.cy; ++y) {
      for (LONG x = 0; x < size_.cx; ++x) {
        image->pixels.push_back(PixelOf(surface_->PixelAt({x, y}).value_or(0)));
      }
    }
  });
  return read ? image : nullptr;
}

HBITMAP InsertBitmap(std::shared_ptr<Bitmap> bitmap) {
  return static_cast<HBITMAP>(Handles().Insert(HandleKind::kBitmap, std::move(bitmap)));
}

}  // namespace platform
