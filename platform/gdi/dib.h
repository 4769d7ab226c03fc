// Device-independent bitmaps as bitmap and icon resources hold them (BITMAPINFOHEADER, colours,
// rows). Not compressed, of 1, 4, 8, 24 or 32 bits. Any thread.
#pragma once

#include <optional>

#include "platform/gdi/image.h"
#include "platform/kernel/byte_view.h"

namespace platform {

// An opaque picture; nothing when the bytes are no bitmap of these kinds, or end too early.
std::optional<Image> DecodeBitmap(ByteView dib);

// The picture of an icon: as wide as the bitmap and half as high, its lower half being the mask.
// The alpha of 32 bits counts unless it is zero everywhere.
std::optional<Image> DecodeIconBitmap(ByteView dib);

}  // namespace platform
