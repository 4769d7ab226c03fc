// Pictures of other sizes. Any thread.
#pragma once

#include "platform/gdi/image.h"

namespace platform {

// Each new pixel is the mean of what it covers, weighted by alpha. The sides are at least 1.
Image Scaled(const Image& image, int width, int height);

}  // namespace platform
