// The flat functions of GDI+ for text on a device context.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <memory>
#include <utility>

#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/device_context.h"
#include "platform/gdi/gdiplus_objects.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

using namespace Gdiplus;

constexpr INT kAllStyles = FontStyleBoldItalic | FontStyleUnderline | FontStyleStrikeout;
constexpr ARGB kOpaque = 0xFF;

// Pixels of 96 to the inch per unit; zero for a unit that fonts do not support.
double PixelsPerUnit(Unit unit) {
  switch (unit) {
    case UnitWorld:
    case UnitPixel:
      return 1;
    case UnitPoint:
      return 96.0 / 72;
    case UnitInch:
      return 96;
    case UnitDocument:
      return 96.0 / 300;
    case UnitMillimeter:
      return 96 / 25.4;
    default:
      return 0;
  }
}

// Inserts the object into the handle table and returns it as the pointer type of the API.
template <class Pointer, class T>
GpStatus ReturnHandle(HandleKind kind, std::shared_ptr<T> object, Pointer** result) {
  *result = static_cast<Pointer*>(Handles().Insert(kind, std::move(object)));
  return Ok;
}

GpStatus CreateGraphics(HDC context, GpGraphics** graphics) {
  if (graphics == nullptr) return InvalidParameter;
  if (ContextOf(context) == nullptr) return OutOfMemory;
  auto made = std::make_shared<GdiplusGraphics>();
  made->context = context;
  return ReturnHandle(HandleKind::kGdiplusGraphics, std::move(made), graphics);
}

GpStatus SetQuality(GpGraphics* graphics, TextRenderingHint hint) {
  const auto found = Resolve<GdiplusGraphics>(HandleKind::kGdiplusGraphics, graphics);
  const bool isSupported =
      hint >= TextRenderingHintSystemDefault && hint <= TextRenderingHintClearTypeGridFit;
  if (found == nullptr || !isSupported) return InvalidParameter;
  if (hint == TextRenderingHintSystemDefault) {
    found->textQuality = DEFAULT_QUALITY;
  } else {
    found->textQuality =
        hint <= TextRenderingHintSingleBitPerPixel ? NONANTIALIASED_QUALITY : ANTIALIASED_QUALITY;
  }
  return Ok;
}

GpStatus CreateFamily(const WCHAR* name, GpFontCollection* collection, GpFontFamily** family) {
  // There are no font collections, so a collection is never valid.
  if (name == nullptr || family == nullptr || collection != nullptr) return InvalidParameter;
  const std::wstring face(name);
  bool has = false;
  WithGraphics([&](GraphicsBackend& graphics) { has = graphics.HasFace(face); });
  if (!has || face.empty() || face.size() >= LF_FACESIZE) return FontFamilyNotFound;
  auto made = std::make_shared<GdiplusFontFamily>();
  made->face = face;
  return ReturnHandle(HandleKind::kGdiplusFontFamily, std::move(made), family);
}

GpStatus CreateFontOf(const GpFontFamily* family, REAL size, INT style, Unit unit, GpFont** font) {
  const auto found = Resolve<GdiplusFontFamily>(HandleKind::kGdiplusFontFamily, family);
  const double pixels = static_cast<double>(size) * PixelsPerUnit(unit);
  if (found == nullptr || font == nullptr || !(pixels > 0) || (style & ~kAllStyles) != 0) {
    return InvalidParameter;
  }
  auto made = std::make_shared<GdiplusFont>();
  LOGFONTW& description = made->description;
  description.lfHeight = -std::max(1, static_cast<int>(std::lround(std::min(pixels, 10'000.0))));
  description.lfWeight = (style & FontStyleBold) != 0 ? FW_BOLD : FW_NORMAL;
  description.lfItalic = (style & FontStyleItalic) != 0;
  description.lfUnderline = (style & FontStyleUnderline) != 0;
  description.lfStrikeOut = (style & FontStyleStrikeout) != 0;
  description.lfCharSet = DEFAULT_CHARSET;
  std::ranges::copy(found->face, description.lfFaceName);
  return ReturnHandle(HandleKind::kGdiplusFont, std::move(made), font);
}

GpStatus CreateFill(ARGB colour, GpSolidFill** brush) {
  if (brush == nullptr) return InvalidParameter;
  if (colour >> 24 != kOpaque) {
    LogLine("GdipCreateSolidFill: colours are opaque");
    return NotImplemented;
  }
  auto made = std::make_shared<GdiplusBrush>();
  made->colour = RGB(colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF);
  return ReturnHandle(HandleKind::kGdiplusBrush, std::move(made), brush);
}

GpStatus DrawAt(const GdiplusGraphics& graphics, const std::wstring& text, const GdiplusFont& font,
                const RectF& layout, COLORREF colour) {
  const auto context = ContextOf(graphics.context);
  if (context == nullptr) return Win32Error;
  LOGFONTW description = font.description;
  description.lfQuality = graphics.textQuality;
  const TextStyle style{description, colour};
  // GDI+ leaves a sixth of the font's size free on either side of a text, as documented.
  const double margin = -font.description.lfHeight / 6.0;
  const bool drawn = context->Draw("GdipDrawString", [&](Canvas& canvas) {
    canvas.DrawText(text, static_cast<double>(layout.X) + margin, static_cast<double>(layout.Y),
                    style);
  });
  return drawn ? Ok : Win32Error;
}

GpStatus DrawTextOf(GpGraphics* graphics, const WCHAR* text, INT length, const GpFont* font,
                    const RectF* layout, const GpBrush* brush) {
  const auto target = Resolve<GdiplusGraphics>(HandleKind::kGdiplusGraphics, graphics);
  const auto face = Resolve<GdiplusFont>(HandleKind::kGdiplusFont, font);
  const auto fill = Resolve<GdiplusBrush>(HandleKind::kGdiplusBrush, brush);
  if (target == nullptr || face == nullptr || fill == nullptr || text == nullptr ||
      layout == nullptr || length < -1) {
    return InvalidParameter;
  }
  if (layout->Width != 0 || layout->Height != 0) {
    LogLine("GdipDrawString: text is not wrapped");
    return NotImplemented;
  }
  const std::wstring shown(text, length < 0 ? std::wcslen(text) : static_cast<std::size_t>(length));
  return DrawAt(*target, shown, *face, *layout, fill->colour);
}

}  // namespace
}  // namespace platform

namespace Gdiplus::DllExports {

extern "C" {

GpStatus WINAPI GdipCreateFromHDC(HDC context, GpGraphics** graphics) try {
  if (!platform::IsGdiplusStarted()) return GdiplusNotInitialized;
  return platform::CreateGraphics(context, graphics);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipDeleteGraphics(GpGraphics* graphics) try {
  return platform::EndGdiplusObject(platform::HandleKind::kGdiplusGraphics, graphics);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipSetTextRenderingHint(GpGraphics* graphics, TextRenderingHint hint) try {
  if (!platform::IsGdiplusStarted()) return GdiplusNotInitialized;
  return platform::SetQuality(graphics, hint);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipCreateFontFamilyFromName(const WCHAR* name, GpFontCollection* collection,
                                             GpFontFamily** family) try {
  if (!platform::IsGdiplusStarted()) return GdiplusNotInitialized;
  return platform::CreateFamily(name, collection, family);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipDeleteFontFamily(GpFontFamily* family) try {
  return platform::EndGdiplusObject(platform::HandleKind::kGdiplusFontFamily, family);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipCreateFont(const GpFontFamily* family, REAL size, INT style, Unit unit,
                               GpFont** font) try {
  if (!platform::IsGdiplusStarted()) return GdiplusNotInitialized;
  return platform::CreateFontOf(family, size, style, unit, font);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipDeleteFont(GpFont* font) try {
  return platform::EndGdiplusObject(platform::HandleKind::kGdiplusFont, font);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipCreateSolidFill(ARGB colour, GpSolidFill** brush) try {
  if (!platform::IsGdiplusStarted()) return GdiplusNotInitialized;
  return platform::CreateFill(colour, brush);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipDeleteBrush(GpBrush* brush) try {
  return platform::EndGdiplusObject(platform::HandleKind::kGdiplusBrush, brush);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

GpStatus WINAPI GdipDrawString(GpGraphics* graphics, const WCHAR* text, INT length,
                               const GpFont* font, const RectF* layout,
                               const GpStringFormat* format, const GpBrush* brush) try {
  if (!platform::IsGdiplusStarted()) return GdiplusNotInitialized;
  // There are no string formats, so a format is never valid.
  if (format != nullptr) return InvalidParameter;
  return platform::DrawTextOf(graphics, text, length, font, layout, brush);
} catch (...) {
  platform::ErrorOfException();
  return GenericError;
}

}  // extern "C"

}  // namespace Gdiplus::DllExports
