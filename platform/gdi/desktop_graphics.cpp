#include "platform/gdi/desktop_graphics.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {
namespace {

// The colours that Windows documents as its defaults, COLOR_SCROLLBAR to COLOR_INFOBK.
constexpr std::array<COLORREF, 25> kDefaultColours = {
    RGB(200, 200, 200), RGB(0, 0, 0),       RGB(153, 180, 209), RGB(191, 205, 219),
    RGB(240, 240, 240), RGB(255, 255, 255), RGB(100, 100, 100), RGB(0, 0, 0),
    RGB(0, 0, 0),       RGB(0, 0, 0),       RGB(180, 180, 180), RGB(244, 247, 252),
    RGB(171, 171, 171), RGB(0, 120, 215),   RGB(255, 255, 255), RGB(240, 240, 240),
    RGB(160, 160, 160), RGB(109, 109, 109), RGB(0, 0, 0),       RGB(0, 0, 0),
    RGB(255, 255, 255), RGB(105, 105, 105), RGB(227, 227, 227), RGB(0, 0, 0),
    RGB(255, 255, 225)};

LOGFONTW DefaultFont() {
  constexpr std::wstring_view kFace = L"Tahoma";
  LOGFONTW font{};
  font.lfHeight = -11;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  std::ranges::copy(kFace, font.lfFaceName);
  return font;
}

}  // namespace

bool IsSystemColour(int index) {
  return index >= 0 && static_cast<std::size_t>(index) < kDefaultColours.size();
}

COLORREF SystemColour(int index) {
  // A query for a colour does not start a desktop.
  COLORREF colour = kDefaultColours.at(static_cast<std::size_t>(index));
  WithRunningGraphics([&](GraphicsBackend& graphics) { colour = graphics.SystemColour(index); });
  return colour;
}

LOGFONTW SystemFont(SystemFontUse use) {
  LOGFONTW font = DefaultFont();
  WithRunningGraphics([&](GraphicsBackend& graphics) { font = graphics.SystemFont(use); });
  return font;
}

}  // namespace platform
