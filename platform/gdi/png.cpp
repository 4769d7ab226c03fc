#include "platform/gdi/png.h"

#include <png.h>

namespace platform {
namespace {

constexpr std::size_t kSignatureBytes = 8;
// An icon's picture; a larger one is no icon's.
constexpr png_uint_32 kLongestSide = 1024;

}  // namespace

bool IsPng(ByteView bytes) {
  return bytes.size() >= kSignatureBytes &&
         ::png_sig_cmp(reinterpret_cast<png_const_bytep>(bytes.data()), 0, kSignatureBytes) == 0;
}

std::optional<Image> DecodePng(ByteView bytes) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (::png_image_begin_read_from_memory(&png, bytes.data(), bytes.size()) == 0) {
    return std::nullopt;
  }
  if (png.width > kLongestSide || png.height > kLongestSide) {
    ::png_image_free(&png);
    return std::nullopt;
  }
  png.format = PNG_FORMAT_BGRA;
  Image image{static_cast<int>(png.width), static_cast<int>(png.height), {}};
  image.pixels.resize(std::size_t{png.width} * png.height);
  // It frees what it allocated, whether it succeeds or not.
  if (::png_image_finish_read(&png, nullptr, image.pixels.data(), 0, nullptr) == 0) {
    return std::nullopt;
  }
  return image;
}

}  // namespace platform
