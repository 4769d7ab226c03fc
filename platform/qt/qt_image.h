// Decodes the images of icons and bitmaps. Used on the window thread.
#pragma once

#include <QImage>

#include "platform/gdi/image.h"

namespace platform {

// The result is cached. Null, with a line in the log, when the bytes are damaged.
const QImage& DecodedImage(const Image& image);

}  // namespace platform
