// The pictures of one icon resource (RT_GROUP_ICON and its RT_ICON entries). Any thread.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/gdi/image.h"
#include "platform/kernel/byte_view.h"

namespace platform {

// Gives the bytes of the RT_ICON resource of that number; none when it is missing.
using IconEntrySource = std::function<ByteView(std::uint16_t number)>;

// One picture per size, the one of the most colours; what cannot be read is left out, with a line
// in the log.
std::vector<Image> DecodeIconGroup(ByteView group, const IconEntrySource& entryOf);

// The icon at a size: the picture of that size, else the next larger one scaled down, else the
// largest scaled up; then all the others. The pictures are not empty, and the sides at least 1.
IconImages IconOfSize(std::vector<Image> pictures, int width, int height);

}  // namespace platform
