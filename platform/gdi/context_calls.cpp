// Creating and deleting device contexts, and their attributes and selected objects.
#include <windows.h>

#include <utility>

#include "platform/gdi/device_context.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr int kPixelsPerInch = 96;

// A bitmap can be selected into memory contexts only, and into one of them at a time.
HGDIOBJ SelectBitmap(DeviceContext& context, HBITMAP handle) {
  auto bitmap = Resolve<Bitmap>(HandleKind::kBitmap, handle);
  if (bitmap == nullptr || context.kind != DeviceContext::Kind::kMemory) return nullptr;
  const bool elsewhere = bitmap->selections > 0 && bitmap != context.bitmap.Get();
  if (elsewhere && !bitmap->isStock) return nullptr;
  return context.bitmap.Replace(handle, std::move(bitmap));
}

HGDIOBJ Select(DeviceContext& context, HGDIOBJ object) {
  HandleKind kind{};
  const auto found = Handles().FindAny(object, kind);
  if (found == nullptr) return nullptr;
  switch (kind) {
    case HandleKind::kFont:
      return context.font.Replace(static_cast<HFONT>(object),
                                  std::static_pointer_cast<Font>(found));
    case HandleKind::kPen:
      return context.pen.Replace(static_cast<HPEN>(object), std::static_pointer_cast<Pen>(found));
    case HandleKind::kBrush:
      return context.brush.Replace(static_cast<HBRUSH>(object),
                                   std::static_pointer_cast<Brush>(found));
    case HandleKind::kBitmap:
      return SelectBitmap(context, static_cast<HBITMAP>(object));
    default:
      return nullptr;
  }
}

// Returns the previous value, or `failure` when the handle is not a context.
template <class T>
T Exchange(HDC handle, T DeviceContext::*member, T value, T failure) {
  const auto context = ContextOf(handle);
  return context != nullptr ? std::exchange((*context).*member, value) : failure;
}

}  // namespace
}  // namespace platform

extern "C" {

HDC WINAPI CreateCompatibleDC(HDC context) try {
  if (context != nullptr && platform::ContextOf(context) == nullptr) return nullptr;
  using platform::DeviceContext;
  return platform::MakeContext(std::make_shared<DeviceContext>(DeviceContext::Kind::kMemory));
} catch (...) {
  return platform::FailedCall<HDC>(nullptr);
}

BOOL WINAPI DeleteDC(HDC context) try {
  return platform::EndContext(context, {platform::DeviceContext::Kind::kMemory});
} catch (...) {
  return platform::FailedCall(FALSE);
}

HGDIOBJ WINAPI SelectObject(HDC context, HGDIOBJ object) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return nullptr;
  const HGDIOBJ before = platform::Select(*found, object);
  if (before == nullptr) ::SetLastError(ERROR_INVALID_HANDLE);
  return before;
} catch (...) {
  return platform::FailedCall<HGDIOBJ>(nullptr);
}

int WINAPI GetDeviceCaps(HDC context, int index) try {
  if (platform::ContextOf(context) == nullptr) return 0;
  if (index == LOGPIXELSX || index == LOGPIXELSY) return platform::kPixelsPerInch;
  platform::LogLine("GetDeviceCaps: only the pixels per inch are known");
  return 0;
} catch (...) {
  return platform::FailedCall(0);
}

COLORREF WINAPI SetTextColor(HDC context, COLORREF colour) try {
  return platform::Exchange(context, &platform::DeviceContext::textColour, colour, CLR_INVALID);
} catch (...) {
  return platform::FailedCall(CLR_INVALID);
}

COLORREF WINAPI SetBkColor(HDC context, COLORREF colour) try {
  return platform::Exchange(context, &platform::DeviceContext::backgroundColour, colour,
                            CLR_INVALID);
} catch (...) {
  return platform::FailedCall(CLR_INVALID);
}

int WINAPI SetBkMode(HDC context, int mode) try {
  if (mode != TRANSPARENT && mode != OPAQUE) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  return platform::Exchange(context, &platform::DeviceContext::backgroundMode, mode, 0);
} catch (...) {
  return platform::FailedCall(0);
}

}  // extern "C"
