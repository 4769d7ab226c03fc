#include "platform/kernel/layer_modules.h"

#include "platform/gdi/gdiplus_exports.h"

namespace platform {

std::map<std::wstring, ExportTable> LayerModules() {
  return {{L"gdiplus.dll", GdiplusExports()}};
}

}  // namespace platform
