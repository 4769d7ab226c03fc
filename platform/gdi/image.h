// Images of icons and bitmaps, as the resources hold them. The desktop module decodes an image when
// it first shows it. Immutable; any thread.
#pragma once

#include <vector>

#include "platform/kernel/byte_view.h"

namespace platform {

enum class ImageFormat {
  kIcon,    // an RT_ICON resource: a PNG file, or a device-independent bitmap and its mask
  kBitmap,  // an RT_BITMAP resource: a device-independent bitmap
};

struct Image {
  ImageFormat format = ImageFormat::kBitmap;
  int width = 0;  // in pixels
  int height = 0;
  ByteView bytes;  // of a resource, valid as long as the process
};

// One icon: its nominal size, and its images in ascending order of size. The image that fits the
// screen best is drawn.
struct IconImages {
  int width = 0;
  int height = 0;
  std::vector<Image> images;
};

}  // namespace platform
