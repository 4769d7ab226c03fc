// Pixels of icons and bitmaps, as plain data. Immutable once shared; any thread.
#pragma once

#include <cstdint>
#include <vector>

namespace platform {

// Rows from the top, each pixel 0xAARRGGBB with the colours not multiplied by alpha.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};

// One icon at its nominal size, with further sizes of the same picture for screens that scale.
struct IconImages {
  int width = 0;
  int height = 0;
  std::vector<Image> images;  // the one of the nominal size first
};

}  // namespace platform
