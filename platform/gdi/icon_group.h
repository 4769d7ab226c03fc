// The pictures of one icon resource (RT_GROUP_ICON and its RT_ICON entries). Any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/gdi/image.h"

namespace platform {

// Gives the bytes of the RT_ICON resource of that number; none when it is missing.
using IconEntrySource = std::function<ByteView(std::uint16_t number)>;

// One picture per size, the one of the most colours, in the order of the sizes; a missing one is
// left out, with a line in the log.
std::vector<Image> ReadIconGroup(ByteView group, const IconEntrySource& entryOf);

}  // namespace platform
