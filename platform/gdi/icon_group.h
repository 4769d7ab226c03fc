// The images of one icon resource (RT_GROUP_ICON and its RT_ICON entries). Any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/gdi/image.h"

namespace platform {

// Returns the bytes of the RT_ICON resource with that number; empty when it is missing.
using IconEntrySource = std::function<ByteView(std::uint16_t number)>;

// Returns one image per size, the one with the most colours, in ascending order of size. An image
// that is missing is left out, with a line in the log.
std::vector<Image> ReadIconGroup(ByteView group, const IconEntrySource& entryOf);

}  // namespace platform
