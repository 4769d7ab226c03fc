#include <windows.h>

#include <cstddef>
#include <cstring>

#include "platform/gdi/desktop_graphics.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr std::size_t kSizeBeforeVista = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);

// The lengths are those that Windows documents as its defaults, in pixels.
NONCLIENTMETRICSW CurrentMetrics() {
  NONCLIENTMETRICSW metrics{};
  metrics.iBorderWidth = 1;
  metrics.iScrollWidth = metrics.iScrollHeight = 17;
  metrics.iCaptionWidth = 36;
  metrics.iCaptionHeight = 22;
  metrics.iSmCaptionWidth = metrics.iSmCaptionHeight = 22;
  metrics.iMenuWidth = metrics.iMenuHeight = 19;
  metrics.iPaddedBorderWidth = 4;
  metrics.lfCaptionFont = metrics.lfSmCaptionFont = SystemFont(SystemFontUse::kCaption);
  metrics.lfMenuFont = SystemFont(SystemFontUse::kMenu);
  metrics.lfStatusFont = metrics.lfMessageFont = SystemFont(SystemFontUse::kMessage);
  return metrics;
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI SystemParametersInfoW(UINT action, UINT /*parameter*/, PVOID data,
                                             UINT /*update*/) {
  if (action != SPI_GETNONCLIENTMETRICS) {
    platform::LogLine("SystemParametersInfoW: only the metrics of windows can be asked for");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  auto* const wanted = static_cast<NONCLIENTMETRICSW*>(data);
  const UINT size = wanted != nullptr ? wanted->cbSize : 0;
  if (size != sizeof *wanted && size != platform::kSizeBeforeVista) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  NONCLIENTMETRICSW metrics = platform::CurrentMetrics();
  metrics.cbSize = size;
  std::memcpy(wanted, &metrics, size);
  return TRUE;
}
