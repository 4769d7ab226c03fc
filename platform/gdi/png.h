// PNG pictures inside icon resources. Any thread.
#pragma once

#include <optional>

#include "platform/gdi/image.h"
#include "platform/kernel/byte_view.h"

namespace platform {

bool IsPng(ByteView bytes);
// Nothing when the bytes are damaged.
std::optional<Image> DecodePng(ByteView bytes);

}  // namespace platform
