#include "frame/banner_text_drawer.h"

#include <memory>

#include "handles/gdi_handles.h"

namespace quillgate {
namespace {

constexpr int kPointsPerInch = 72;
constexpr BYTE kAntiAliasedQuality = 4;
// Offsets in pixels: of the shadow from the text, and of the text from the caller's position. GDI+
// and GDI use different ones.
constexpr float kGdiPlusShadow = 2.5F;
constexpr int kGdiShadowX = 6;
constexpr int kGdiShadowY = 2;
constexpr int kGdiTextX = 4;

DWORD Opaque(COLORREF colour) {
  return 0xFF000000U | static_cast<DWORD>(GetRValue(colour)) << 16 |
         static_cast<DWORD>(GetGValue(colour)) << 8 | GetBValue(colour);
}

// Owns a GDI+ object; the deleter is the GDI+ function that deletes it.
template <class Object>
using Owned = std::unique_ptr<Object, int(WINAPI*)(Object*)>;

// The GDI+ objects for drawing text on a device context. An object that could not be created is
// null.
struct TextObjects {
  Owned<GdiPlusGraphics> graphics;
  Owned<GdiPlusFontFamily> family;
  Owned<GdiPlusFont> font;
};

TextObjects CreateTextObjects(const GdiPlusFunctions& gdiPlus, HDC context,
                              const BannerFont& look) {
  GdiPlusGraphics* graphics = nullptr;
  GdiPlusFontFamily* family = nullptr;
  GdiPlusFont* font = nullptr;
  gdiPlus.createFromHdc(context, &graphics);
  gdiPlus.createFontFamilyFromName(look.face.c_str(), nullptr, &family);
  const int style = (look.bold ? kGdiPlusStyleBold : 0) | (look.italic ? kGdiPlusStyleItalic : 0);
  if (family != nullptr) {
    gdiPlus.createFont(family, static_cast<float>(look.points), style, kGdiPlusUnitPoint, &font);
  }
  return {{graphics, gdiPlus.deleteGraphics},
          {family, gdiPlus.deleteFontFamily},
          {font, gdiPlus.deleteFont}};
}

bool Write(const GdiPlusFunctions& gdiPlus, const TextObjects& objects, const std::wstring& text,
           float x, float y, COLORREF colour) {
  GdiPlusBrush* created = nullptr;
  gdiPlus.createSolidFill(Opaque(colour), &created);
  const Owned<GdiPlusBrush> brush(created, gdiPlus.deleteBrush);
  const GdiPlusRectangle layout{x, y, 0, 0};
  return brush != nullptr &&
         gdiPlus.drawString(objects.graphics.get(), text.c_str(), static_cast<int>(text.size()),
                            objects.font.get(), &layout, nullptr, brush.get()) == 0;
}

FontHandle MakeFont(HDC context, const BannerFont& look) {
  LOGFONTW font{};
  font.lfHeight = -(look.points * ::GetDeviceCaps(context, LOGPIXELSY) / kPointsPerInch);
  font.lfWeight = look.bold ? FW_BOLD : FW_NORMAL;
  font.lfItalic = look.italic ? TRUE : FALSE;
  font.lfQuality = kAntiAliasedQuality;
  look.face.copy(font.lfFaceName, LF_FACESIZE - 1);
  return FontHandle(::CreateFontIndirectW(&font));
}

}  // namespace

BannerTextDrawer::BannerTextDrawer(const GdiPlus& gdiPlus, BannerFont font)
    : gdiPlus_(gdiPlus), font_(std::move(font)) {}

void BannerTextDrawer::Draw(HDC context, int x, int y, const std::wstring& text) const {
  const GdiPlusFunctions* functions = gdiPlus_.Functions();
  if (functions != nullptr && DrawWithGdiPlus(*functions, context, x, y, text)) return;
  DrawWithGdi(context, x, y, text);
}

bool BannerTextDrawer::DrawWithGdiPlus(const GdiPlusFunctions& functions, HDC context, int x, int y,
                                       const std::wstring& text) const {
  const TextObjects objects = CreateTextObjects(functions, context, font_);
  if (objects.graphics == nullptr || objects.font == nullptr) return false;
  functions.setTextRenderingHint(objects.graphics.get(), kGdiPlusTextAntiAlias);
  const auto left = static_cast<float>(x);
  const auto top = static_cast<float>(y);
  return Write(functions, objects, text, left + kGdiPlusShadow, top + kGdiPlusShadow,
               font_.shadowColour) &&
         Write(functions, objects, text, left, top, font_.textColour);
}

void BannerTextDrawer::DrawWithGdi(HDC context, int x, int y, const std::wstring& text) const {
  const FontHandle font = MakeFont(context, font_);
  const SelectedObject selected(context, font.Get());
  const int length = static_cast<int>(text.size());
  const int modeBefore = ::SetBkMode(context, TRANSPARENT);
  const COLORREF colourBefore = ::SetTextColor(context, font_.shadowColour);
  ::TextOutW(context, x + kGdiShadowX, y + kGdiShadowY, text.c_str(), length);
  ::SetTextColor(context, font_.textColour);
  ::TextOutW(context, x + kGdiTextX, y, text.c_str(), length);
  ::SetTextColor(context, colourBefore);
  ::SetBkMode(context, modeBefore);
}

}  // namespace quillgate
