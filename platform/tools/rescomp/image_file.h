// Icon and bitmap files, and how they are stored as resources.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

// One image of an icon file (.ico).
struct IconImage {
  // Width, height, colours, planes and bits, as file and group share them.
  std::vector<std::uint8_t> description;
  Bytes data;
};

// Throws std::runtime_error when the bytes are no icon file.
std::vector<IconImage> ReadIconFile(const Bytes& file);

// The directory of the images (RT_GROUP_ICON); they are the icon resources (RT_ICON) with numbers
// from the first one on, in their order.
Bytes EncodeIconGroup(const std::vector<IconImage>& images, std::uint16_t firstNumber);

// A bitmap file (.bmp) without its file header. Throws std::runtime_error when it is none.
Bytes BitmapWithoutFileHeader(const Bytes& file);

}  // namespace rescomp
