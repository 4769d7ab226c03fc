// PNG pictures inside icon resources. Any thread.
#pragma once

#include <optional>

#include "platform/kernel/byte_view.h"
#include "platform/gdi/image.h"

namespace platform {

bool IsPng(ByteView bytes);
// Nothing when the bytes are damaged.
std::optional<Image> DecodePng(ByteView bytes);

}  // namespace platform
