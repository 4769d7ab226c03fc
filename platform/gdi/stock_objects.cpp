// Stock fonts, pens and brushes, and the brushes of the system colours.
#include <windows.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/gdi/brush.h"
#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/font.h"
#include "platform/gdi/pen.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

HBRUSH StockBrush(Brush* brush) {
  brush->isStock = true;
  return InsertBrush(std::shared_ptr<Brush>(brush));
}

HPEN StockPen(std::optional<COLORREF> colour) {
  auto pen = std::make_shared<Pen>(colour, 1);
  pen->isStock = true;
  return InsertPen(std::move(pen));
}

HFONT StockFont(LONG height, LONG weight, std::wstring_view face) {
  LOGFONTW description{};
  description.lfHeight = height;
  description.lfWeight = weight;
  description.lfCharSet = DEFAULT_CHARSET;
  std::ranges::copy(face, description.lfFaceName);
  auto font = std::make_shared<Font>(description);
  font->isStock = true;
  return InsertFont(std::move(font));
}

// Indexed by WHITE_BRUSH to NULL_BRUSH.
const std::array<HBRUSH, 6>& StockBrushes() {
  static const std::array<HBRUSH, 6> brushes = {
      StockBrush(new Brush(RGB(255, 255, 255))), StockBrush(new Brush(RGB(192, 192, 192))),
      StockBrush(new Brush(RGB(128, 128, 128))), StockBrush(new Brush(RGB(64, 64, 64))),
      StockBrush(new Brush(RGB(0, 0, 0))),       StockBrush(new Brush(std::nullopt))};
  return brushes;
}

// Indexed by WHITE_PEN to NULL_PEN, counted from WHITE_PEN.
const std::array<HPEN, 3>& StockPens() {
  static const std::array<HPEN, 3> pens = {StockPen(RGB(255, 255, 255)), StockPen(RGB(0, 0, 0)),
                                           StockPen(std::nullopt)};
  return pens;
}

const std::array<HBRUSH, COLOR_INFOBK + 1>& SystemBrushes() {
  static const auto brushes = [] {
    std::array<HBRUSH, COLOR_INFOBK + 1> made{};
    for (int index = 0; index <= COLOR_INFOBK; ++index) {
      made.at(static_cast<std::size_t>(index)) = StockBrush(new Brush(Brush::SystemIndex{index}));
    }
    return made;
  }();
  return brushes;
}

}  // namespace
}  // namespace platform

extern "C" {

HGDIOBJ WINAPI GetStockObject(int index) try {
  static const HFONT systemFont = platform::StockFont(16, FW_BOLD, L"System");
  static const HFONT interfaceFont = platform::StockFont(-11, FW_NORMAL, L"MS Shell Dlg");
  if (index >= WHITE_BRUSH && index <= NULL_BRUSH) {
    return platform::StockBrushes().at(static_cast<std::size_t>(index));
  }
  if (index >= WHITE_PEN && index <= NULL_PEN) {
    return platform::StockPens().at(static_cast<std::size_t>(index - WHITE_PEN));
  }
  if (index == SYSTEM_FONT) return systemFont;
  if (index == DEFAULT_GUI_FONT) return interfaceFont;
  platform::LogLine("GetStockObject: only brushes, pens and two fonts are kept");
  return nullptr;
} catch (...) {
  return platform::FailedCall<HGDIOBJ>(nullptr);
}

DWORD WINAPI GetSysColor(int index) try {
  return platform::IsSystemColour(index) ? platform::SystemColour(index) : 0;
} catch (...) {
  return platform::FailedCall(DWORD{0});
}

HBRUSH WINAPI GetSysColorBrush(int index) try {
  if (!platform::IsSystemColour(index)) return nullptr;
  return platform::SystemBrushes().at(static_cast<std::size_t>(index));
} catch (...) {
  return platform::FailedCall<HBRUSH>(nullptr);
}

}  // extern "C"
