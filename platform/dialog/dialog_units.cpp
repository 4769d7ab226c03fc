#include "platform/dialog/dialog_units.h"

#include <algorithm>
#include <cstdlib>

#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr int kPixelsPerInch = 96;
constexpr int kPointsPerInch = 72;
// The height of an 8 point font, in pixels.
constexpr int kBaseFontPixels = 11;

DialogUnits Measure(GraphicsBackend& graphics, const LOGFONTW& font) {
  const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const int width = graphics.MeasureText(letters, font).cx;
  return {(width / 26 + 1) / 2, graphics.MetricsOf(font).height};
}

}  // namespace

int DialogUnits::X(int units) const {
  return ::MulDiv(units, width, 4);
}

int DialogUnits::Y(int units) const {
  return ::MulDiv(units, height, 8);
}

RECT DialogUnits::Pixels(const RECT& units) const {
  return {X(units.left), Y(units.top), X(units.right), Y(units.bottom)};
}

LOGFONTW LogicalFontOf(const DialogFont& font) {
  LOGFONTW logical{};
  logical.lfHeight = -::MulDiv(font.points, kPixelsPerInch, kPointsPerInch);
  logical.lfWeight = font.weight;
  logical.lfItalic = font.italic ? 1 : 0;
  const std::size_t length = std::min<std::size_t>(font.face.size(), LF_FACESIZE - 1);
  std::copy_n(font.face.begin(), length, logical.lfFaceName);
  return logical;
}

DialogUnits UnitsOf(const LOGFONTW& font) {
  if (IsWindowThread()) return Measure(Desktop().Graphics(), font);
  const DialogUnits base;
  const int pixels = std::abs(font.lfHeight);
  return {std::max(1, ::MulDiv(base.width, pixels, kBaseFontPixels)),
          std::max(1, ::MulDiv(base.height, pixels, kBaseFontPixels))};
}

}  // namespace platform
