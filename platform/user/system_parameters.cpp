#include <windows.h>

#include <cstddef>
#include <cstring>

#include "platform/gdi/desktop_graphics.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/screen.h"

namespace platform {
namespace {

constexpr std::size_t kSizeBeforeVista = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);

// The lengths are the documented defaults of Windows, in pixels.
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

DWORD CopyMetrics(PVOID data) {
  auto* const wanted = static_cast<NONCLIENTMETRICSW*>(data);
  const UINT size = wanted != nullptr ? wanted->cbSize : 0;
  if (size != sizeof *wanted && size != kSizeBeforeVista) return ERROR_INVALID_PARAMETER;
  NONCLIENTMETRICSW metrics = CurrentMetrics();
  metrics.cbSize = size;
  std::memcpy(wanted, &metrics, size);
  return NO_ERROR;
}

DWORD CopyWorkArea(PVOID data) {
  if (data == nullptr) return ERROR_INVALID_PARAMETER;
  *static_cast<RECT*>(data) = WorkArea();
  return NO_ERROR;
}

DWORD CopyParameter(UINT action, PVOID data) {
  switch (action) {
    case SPI_GETNONCLIENTMETRICS:
      return CopyMetrics(data);
    case SPI_GETWORKAREA:
      return CopyWorkArea(data);
    default:
      LogLine("SystemParametersInfoW: only metrics of windows and the work area can be asked for");
      return ERROR_INVALID_PARAMETER;
  }
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI SystemParametersInfoW(UINT action, UINT /*parameter*/, PVOID data,
                                             UINT /*update*/) try {
  const DWORD error = platform::CopyParameter(action, data);
  if (error == NO_ERROR) return TRUE;
  ::SetLastError(error);
  return FALSE;
} catch (...) {
  return platform::FailedCall(FALSE);
}
