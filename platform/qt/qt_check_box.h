// Check boxes in the desktop's style, for windows that paint themselves. Used on the window thread.
#pragma once

#include <QImage>

#include "platform/gdi/canvas.h"

namespace platform {

// The side of the square is in pixels of 96 to the inch; the ratio is screen pixels per such pixel.
// The pixels around the box are transparent.
QImage CheckBoxImage(int side, double ratio, const CheckBoxLook& look);

}  // namespace platform
