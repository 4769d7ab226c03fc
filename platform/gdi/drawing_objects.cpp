// Creating, querying and deleting fonts, pens, brushes and bitmaps.
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <span>

#include "platform/gdi/bitmap.h"
#include "platform/gdi/brush.h"
#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/device_context.h"
#include "platform/gdi/font.h"
#include "platform/gdi/gdi_objects.h"
#include "platform/gdi/pen.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr WORD kBitsPerPixel = 32;

std::shared_ptr<Selectable> SelectableOf(HGDIOBJ object, HandleKind& kind) {
  auto found = Handles().FindAny(object, kind);
  switch (kind) {
    case HandleKind::kFont:
    case HandleKind::kPen:
    case HandleKind::kBrush:
    case HandleKind::kBitmap:
      return std::static_pointer_cast<Selectable>(std::move(found));
    default:
      return nullptr;
  }
}

LOGPEN Description(const Pen& pen) {
  const bool isSolid = pen.colour.has_value();
  return {isSolid ? static_cast<UINT>(PS_SOLID) : static_cast<UINT>(PS_NULL),
          {pen.width, 0},
          pen.colour.value_or(0)};
}

LOGBRUSH Description(const Brush& brush) {
  const auto colour = brush.Colour();
  return {colour.has_value() ? static_cast<UINT>(BS_SOLID) : static_cast<UINT>(BS_NULL),
          colour.value_or(0), 0};
}

BITMAP Description(const Bitmap& bitmap) {
  BITMAP description{};
  description.bmWidth = bitmap.Size().cx;
  description.bmHeight = bitmap.Size().cy;
  description.bmWidthBytes = description.bmWidth * kBitsPerPixel / 8;
  description.bmPlanes = 1;
  description.bmBitsPixel = kBitsPerPixel;
  return description;
}

// Copies as much of the description as fits into the caller's buffer. Returns the size of the whole
// description when there is no buffer.
template <class T>
int CopyDescription(const T& description, int bytes, LPVOID buffer) {
  if (buffer == nullptr) return sizeof description;
  const int copied = std::clamp(bytes, 0, static_cast<int>(sizeof description));
  std::memcpy(buffer, &description, static_cast<std::size_t>(copied));
  return copied;
}

}  // namespace

std::optional<COLORREF> Brush::Colour() const {
  return systemIndex_.has_value() ? SystemColour(*systemIndex_) : colour_;
}

HFONT InsertFont(std::shared_ptr<Font> font) {
  return static_cast<HFONT>(Handles().Insert(HandleKind::kFont, std::move(font)));
}

HPEN InsertPen(std::shared_ptr<Pen> pen) {
  return static_cast<HPEN>(Handles().Insert(HandleKind::kPen, std::move(pen)));
}

HBRUSH InsertBrush(std::shared_ptr<Brush> brush) {
  return static_cast<HBRUSH>(Handles().Insert(HandleKind::kBrush, std::move(brush)));
}

std::shared_ptr<Brush> BrushOf(HBRUSH brush) {
  const auto number = reinterpret_cast<std::uintptr_t>(brush);
  const int index = number <= INT8_MAX ? static_cast<int>(number) - 1 : -1;
  if (IsSystemColour(index)) return std::make_shared<Brush>(Brush::SystemIndex{index});
  return Resolve<Brush>(HandleKind::kBrush, brush);
}

std::optional<LOGFONTW> FontOf(HFONT font) {
  const auto found = Resolve<Font>(HandleKind::kFont, font);
  return found != nullptr ? std::optional(found->description) : std::nullopt;
}

}  // namespace platform

extern "C" {

HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font) try {
  if (font == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  LOGFONTW description = *font;
  description.lfFaceName[LF_FACESIZE - 1] = L'\0';
  return platform::InsertFont(std::make_shared<platform::Font>(description));
} catch (...) {
  return platform::FailedCall<HFONT>(nullptr);
}

HFONT WINAPI CreateFontW(int height, int width, int escapement, int orientation, int weight,
                         DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet,
                         DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                         DWORD pitchAndFamily, LPCWSTR face) try {
  LOGFONTW font{height,
                width,
                escapement,
                orientation,
                weight,
                static_cast<BYTE>(italic),
                static_cast<BYTE>(underline),
                static_cast<BYTE>(strikeOut),
                static_cast<BYTE>(charSet),
                static_cast<BYTE>(outPrecision),
                static_cast<BYTE>(clipPrecision),
                static_cast<BYTE>(quality),
                static_cast<BYTE>(pitchAndFamily),
                {}};
  const std::size_t length = face != nullptr ? std::wcslen(face) : 0;
  // A longer name fails without a last error, as documented.
  if (length >= LF_FACESIZE) return nullptr;
  std::copy_n(face, length, font.lfFaceName);
  return ::CreateFontIndirectW(&font);
} catch (...) {
  return platform::FailedCall<HFONT>(nullptr);
}

HPEN WINAPI CreatePen(int style, int width, COLORREF colour) try {
  if (style != PS_SOLID && style != PS_NULL) {
    platform::LogLine("CreatePen: pens are solid or draw nothing");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  return platform::InsertPen(std::make_shared<platform::Pen>(
      style == PS_SOLID ? std::optional(colour) : std::nullopt, std::max(1, std::abs(width))));
} catch (...) {
  return platform::FailedCall<HPEN>(nullptr);
}

HBRUSH WINAPI CreateSolidBrush(COLORREF colour) try {
  return platform::InsertBrush(std::make_shared<platform::Brush>(colour));
} catch (...) {
  return platform::FailedCall<HBRUSH>(nullptr);
}

HBRUSH WINAPI CreateBrushIndirect(const LOGBRUSH* brush) try {
  if (brush == nullptr || brush->lbStyle > BS_NULL) {
    if (brush != nullptr) platform::LogLine("CreateBrushIndirect: brushes have one colour");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const bool solid = brush->lbStyle == BS_SOLID;
  return platform::InsertBrush(
      std::make_shared<platform::Brush>(solid ? std::optional(brush->lbColor) : std::nullopt));
} catch (...) {
  return platform::FailedCall<HBRUSH>(nullptr);
}

int WINAPI GetObjectW(HANDLE object, int bytes, LPVOID buffer) try {
  using platform::HandleKind;
  HandleKind kind{};
  const auto found = platform::SelectableOf(object, kind);
  if (found == nullptr) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return 0;
  }
  switch (kind) {
    case HandleKind::kFont:
      return platform::CopyDescription(static_cast<platform::Font&>(*found).description, bytes,
                                       buffer);
    case HandleKind::kPen:
      return platform::CopyDescription(platform::Description(static_cast<platform::Pen&>(*found)),
                                       bytes, buffer);
    case HandleKind::kBrush:
      return platform::CopyDescription(platform::Description(static_cast<platform::Brush&>(*found)),
                                       bytes, buffer);
    default:
      return platform::CopyDescription(
          platform::Description(static_cast<platform::Bitmap&>(*found)), bytes, buffer);
  }
} catch (...) {
  return platform::FailedCall(0);
}

BOOL WINAPI DeleteObject(HGDIOBJ object) try {
  platform::HandleKind kind{};
  const auto found = platform::SelectableOf(object, kind);
  if (found == nullptr) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  // Deleting a stock object succeeds and has no effect, as documented.
  if (found->isStock) return TRUE;
  if (found->selections > 0) return FALSE;
  return platform::Handles().Remove(kind, object) != nullptr;
} catch (...) {
  return platform::FailedCall(FALSE);
}

HBITMAP WINAPI CreateCompatibleBitmap(HDC context, int width, int height) try {
  if (platform::ContextOf(context) == nullptr) return nullptr;
  if (width < 0 || height < 0) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  // A bitmap without any area has one pixel, as documented.
  const SIZE size = width == 0 || height == 0 ? SIZE{1, 1} : SIZE{width, height};
  return platform::InsertBitmap(std::make_shared<platform::Bitmap>(size));
} catch (...) {
  return platform::FailedCall<HBITMAP>(nullptr);
}

}  // extern "C"
