// What the layer's module "gdiplus.dll" exports.
#pragma once

#include "platform/kernel/modules.h"

namespace platform {

ExportTable GdiplusExports();

}  // namespace platform
