// The objects behind the pointers of GDI+. The pointers are handles and are never dereferenced. Any
// thread.
#pragma once

#include <windows.h>

#include <gdiplus.h>

#include <string>

#include "platform/kernel/handle_table.h"
#include "platform/kernel/modules.h"

namespace platform {

struct GdiplusGraphics final : Object {
  HDC context = nullptr;
  BYTE textQuality = DEFAULT_QUALITY;
};

struct GdiplusFontFamily final : Object {
  std::wstring face;
};

struct GdiplusFont final : Object {
  LOGFONTW description{};
};

struct GdiplusBrush final : Object {
  COLORREF colour = 0;
};

// True between GdiplusStartup and the last GdiplusShutdown.
bool IsGdiplusStarted();

// The exports of the layer's module "gdiplus.dll".
ExportTable GdiplusExports();

// Destroys the object, which must be of that kind.
Gdiplus::GpStatus EndGdiplusObject(HandleKind kind, const void* pointer);

}  // namespace platform
