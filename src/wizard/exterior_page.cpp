#include "wizard/exterior_page.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "frame/control.h"

namespace quillgate {
namespace {

constexpr std::wstring_view kTitleFace = L"Verdana Bold";
constexpr int kTitlePoints = 12;
constexpr int kPointsPerInch = 72;

// The system's message font in another face, weight and size.
FontHandle MakeTitleFont(HWND window) {
  NONCLIENTMETRICSW metrics{};
  // The size without the last member, which older systems do not support.
  metrics.cbSize = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);
  ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  LOGFONTW font = metrics.lfMessageFont;
  font.lfWeight = FW_BOLD;
  *std::ranges::copy(kTitleFace, font.lfFaceName).out = L'\0';
  const WindowDc context(window);
  font.lfHeight = -(::GetDeviceCaps(context.Get(), LOGPIXELSY) * kTitlePoints / kPointsPerInch);
  return FontHandle(::CreateFontIndirectW(&font));
}

}  // namespace

ExteriorPage::ExteriorPage(const WizardSurroundings& surroundings, WizardState& state,
                           unsigned number, int title)
    : SetupPage(surroundings, state, number, {}), title_(title) {}

bool ExteriorPage::OnInitDialog(HWND window) {
  font_ = MakeTitleFont(window);
  Control(window, title_).SetFont(font_.Get());
  return true;
}

}  // namespace quillgate
