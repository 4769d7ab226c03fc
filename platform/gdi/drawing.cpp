// Drawing and measuring with device contexts.
#include <windows.h>

#include <optional>

#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/device_context.h"
#include "platform/gdi/gdi_objects.h"
#include "platform/gdi/text_argument.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

RECT Area(int x, int y, int width, int height) {
  return {x, y, x + width, y + height};
}

// The icon's own size where the caller passes 0.
SIZE IconSize(const IconImages& icon, int width, int height, UINT flags) {
  constexpr int kSystemSize = 32;
  const bool system = (flags & DI_DEFAULTSIZE) != 0;
  return {width != 0 ? width : (system ? kSystemSize : icon.width),
          height != 0 ? height : (system ? kSystemSize : icon.height)};
}

bool DrawIconOn(DeviceContext& context, const IconImages& icon, const RECT& area, HBRUSH brush) {
  const auto background = BrushOf(brush);
  const auto colour = background != nullptr ? background->Colour() : std::nullopt;
  return context.Draw("DrawIconEx", [&](Canvas& canvas) {
    if (colour.has_value()) canvas.Fill(area, *colour);
    canvas.DrawIcon(icon, area);
  });
}

bool CopyPixels(DeviceContext& target, DeviceContext& source, const RECT& area, POINT from) {
  bool copied = false;
  const bool drawn = target.Draw("BitBlt", [&](Canvas& to) {
    source.Draw("BitBlt", [&](Canvas& origin) { copied = to.CopyFrom(origin, area, from); });
  });
  if (drawn && !copied) LogLine("BitBlt: only bitmaps can be copied from");
  return copied;
}

}  // namespace
}  // namespace platform

extern "C" {

BOOL WINAPI TextOutW(HDC context, int x, int y, LPCWSTR text, int length) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  const auto shown = platform::TextArgument(text, length);
  if (!shown.has_value()) return FALSE;
  return found->Draw(
      "TextOutW", [&](platform::Canvas& canvas) { canvas.DrawText(*shown, x, y, found->Style()); });
} catch (...) {
  return platform::FailedCall(FALSE);
}

BOOL WINAPI GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, LPSIZE size) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  const auto measured = platform::TextArgument(text, length);
  if (size == nullptr) ::SetLastError(ERROR_INVALID_PARAMETER);
  if (!measured.has_value() || size == nullptr) return FALSE;
  return platform::WithGraphics([&](platform::GraphicsBackend& graphics) {
    *size = graphics.MeasureText(*measured, found->Style().font);
  });
} catch (...) {
  return platform::FailedCall(FALSE);
}

int WINAPI FillRect(HDC context, const RECT* area, HBRUSH brush) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return 0;
  const auto filling = platform::BrushOf(brush);
  if (area == nullptr || filling == nullptr) {
    ::SetLastError(area == nullptr ? ERROR_INVALID_PARAMETER : ERROR_INVALID_HANDLE);
    return 0;
  }
  const auto colour = filling->Colour();
  return found->Draw("FillRect", [&](platform::Canvas& canvas) {
    if (colour.has_value()) canvas.Fill(*area, *colour);
  });
} catch (...) {
  return platform::FailedCall(0);
}

BOOL WINAPI DrawIconEx(HDC context, int x, int y, HICON icon, int width, int height, UINT step,
                       HBRUSH brush, UINT flags) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  const auto images = platform::IconOf(icon);
  if (images == nullptr) {
    ::SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return FALSE;
  }
  if ((flags & ~DI_DEFAULTSIZE) != DI_NORMAL || step != 0) {
    platform::LogLine("DrawIconEx: icons are drawn with image and mask, and do not move");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const SIZE size = platform::IconSize(*images, width, height, flags);
  return platform::DrawIconOn(*found, *images, platform::Area(x, y, size.cx, size.cy), brush);
} catch (...) {
  return platform::FailedCall(FALSE);
}

BOOL WINAPI BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX,
                   int sourceY, DWORD operation) try {
  if (operation != SRCCOPY) {
    platform::LogLine("BitBlt: pixels can only be copied");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const auto to = platform::ContextOf(target);
  const auto from = platform::ContextOf(source);
  if (to == nullptr || from == nullptr) return FALSE;
  return platform::CopyPixels(*to, *from, platform::Area(x, y, width, height), {sourceX, sourceY});
} catch (...) {
  return platform::FailedCall(FALSE);
}

COLORREF WINAPI GetPixel(HDC context, int x, int y) try {
  const auto found = platform::ContextOf(context);
  std::optional<COLORREF> colour;
  if (found != nullptr) {
    found->Draw("GetPixel", [&](platform::Canvas& canvas) { colour = canvas.PixelAt({x, y}); });
  }
  return colour.value_or(CLR_INVALID);
} catch (...) {
  return platform::FailedCall(CLR_INVALID);
}

}  // extern "C"
