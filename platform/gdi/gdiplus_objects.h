// What the pointers of GDI+ stand for: they are handles and are never followed. Any thread.
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

// Between GdiplusStartup and the last GdiplusShutdown.
bool IsGdiplusStarted();

// What the layer's module "gdiplus.dll" exports.
ExportTable GdiplusExports();

// Removes the object of that kind.
Gdiplus::GpStatus EndGdiplusObject(HandleKind kind, const void* pointer);

}  // namespace platform
