#include <windows.h>

#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/device_context.h"
#include "platform/kernel/api_result.h"

namespace platform {
namespace {

constexpr LONG kPixelsPerInch = 96;
// The characters of the desktop's fonts, as far as 16 bits reach.
constexpr WCHAR kFirstChar = 0x20;
constexpr WCHAR kLastChar = 0xFFFC;
constexpr WCHAR kDefaultChar = 0x1F;

BYTE PitchAndFamily(const TextMetrics& metrics) {
  constexpr int kOutlines = TMPF_VECTOR | TMPF_TRUETYPE;
  return metrics.isFixedPitch ? kOutlines | FF_MODERN : kOutlines | TMPF_FIXED_PITCH | FF_SWISS;
}

TEXTMETRICW Describe(const TextMetrics& metrics, const LOGFONTW& font) {
  TEXTMETRICW described{};
  described.tmHeight = metrics.height;
  described.tmAscent = metrics.ascent;
  described.tmDescent = metrics.height - metrics.ascent;
  described.tmInternalLeading = metrics.height - metrics.characterHeight;
  described.tmAveCharWidth = metrics.averageCharWidth;
  described.tmMaxCharWidth = metrics.maximumCharWidth;
  described.tmWeight = metrics.isBold ? FW_BOLD : FW_NORMAL;
  described.tmDigitizedAspectX = described.tmDigitizedAspectY = kPixelsPerInch;
  described.tmFirstChar = kFirstChar;
  described.tmLastChar = kLastChar;
  described.tmDefaultChar = kDefaultChar;
  described.tmBreakChar = kFirstChar;
  described.tmItalic = font.lfItalic;
  described.tmUnderlined = font.lfUnderline;
  described.tmStruckOut = font.lfStrikeOut;
  described.tmPitchAndFamily = PitchAndFamily(metrics);
  described.tmCharSet = font.lfCharSet;
  return described;
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI GetTextMetricsW(HDC context, LPTEXTMETRICW metrics) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  if (metrics == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  return platform::WithGraphics([&](platform::GraphicsBackend& graphics) {
    const LOGFONTW& font = found->font.Get()->description;
    *metrics = platform::Describe(graphics.MetricsOf(font), font);
  });
} catch (...) {
  return platform::FailedCall(FALSE);
}
