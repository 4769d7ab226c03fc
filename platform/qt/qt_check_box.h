// Check boxes as the desktop's style draws them, for windows that paint their own. Used on the
// window thread.
#pragma once

#include <QImage>

#include "platform/gdi/canvas.h"

namespace platform {

// A square of that many pixels of 96 to the inch, of which the ratio tells the screen's; what is
// not of the box is transparent.
QImage CheckBoxImage(int side, double ratio, const CheckBoxLook& look);

}  // namespace platform
