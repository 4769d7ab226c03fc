// GDI+: starting it, and its flat functions for text. A program may link them or take them from
// the module "gdiplus.dll".
#pragma once

#include <gdiplus/gdiplusgpstubs.h>
#include <gdiplus/gdiplustypes.h>
#include <windef.h>

namespace Gdiplus {

extern "C" {

using DebugEventProc = void(WINAPI*)(int level, CHAR* message);

struct GdiplusStartupInput {
  std::uint32_t GdiplusVersion;
  DebugEventProc DebugEventCallback;
  BOOL SuppressBackgroundThread;
  BOOL SuppressExternalCodecs;

  GdiplusStartupInput(DebugEventProc debugEventCallback = nullptr,
                      BOOL suppressBackgroundThread = FALSE, BOOL suppressExternalCodecs = FALSE)
      : GdiplusVersion(1),
        DebugEventCallback(debugEventCallback),
        SuppressBackgroundThread(suppressBackgroundThread),
        SuppressExternalCodecs(suppressExternalCodecs) {}
};

using NotificationHookProc = GpStatus(WINAPI*)(ULONG_PTR* token);
using NotificationUnhookProc = void(WINAPI*)(ULONG_PTR token);
struct GdiplusStartupOutput {
  NotificationHookProc NotificationHook = nullptr;
  NotificationUnhookProc NotificationUnhook = nullptr;
};

GpStatus WINAPI GdiplusStartup(ULONG_PTR* token, const GdiplusStartupInput* input,
                               GdiplusStartupOutput* output);
void WINAPI GdiplusShutdown(ULONG_PTR token);

}  // extern "C"

namespace DllExports {

extern "C" {

GpStatus WINAPI GdipCreateFromHDC(HDC context, GpGraphics** graphics);
GpStatus WINAPI GdipDeleteGraphics(GpGraphics* graphics);
GpStatus WINAPI GdipSetTextRenderingHint(GpGraphics* graphics, TextRenderingHint hint);

GpStatus WINAPI GdipCreateFontFamilyFromName(const WCHAR* name, GpFontCollection* collection,
                                             GpFontFamily** family);
GpStatus WINAPI GdipDeleteFontFamily(GpFontFamily* family);
GpStatus WINAPI GdipCreateFont(const GpFontFamily* family, REAL size, INT style, Unit unit,
                               GpFont** font);
GpStatus WINAPI GdipDeleteFont(GpFont* font);

GpStatus WINAPI GdipCreateSolidFill(ARGB colour, GpSolidFill** brush);
GpStatus WINAPI GdipDeleteBrush(GpBrush* brush);

GpStatus WINAPI GdipDrawString(GpGraphics* graphics, const WCHAR* text, INT length,
                               const GpFont* font, const RectF* layout,
                               const GpStringFormat* format, const GpBrush* brush);

}  // extern "C"

}  // namespace DllExports

}  // namespace Gdiplus
