// Decodes the pictures of icons and bitmaps. Used on the window thread.
#pragma once

#include <QImage>

#include "platform/gdi/image.h"

namespace platform {

// Kept for the next time. Null, with a line in the log, for bytes that are damaged.
const QImage& DecodedImage(const Image& image);

}  // namespace platform
