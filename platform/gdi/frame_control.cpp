// Parts of controls, for windows that paint themselves.
#include <windows.h>

#include <algorithm>

#include "platform/gdi/device_context.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// The largest square in the middle of the area.
RECT SquareIn(const RECT& area) {
  const LONG width = area.right - area.left;
  const LONG height = area.bottom - area.top;
  const LONG side = std::min(width, height);
  const LONG left = area.left + (width - side) / 2;
  const LONG top = area.top + (height - side) / 2;
  return {left, top, left + side, top + side};
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI DrawFrameControl(HDC context, LPRECT area, UINT type, UINT state) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  const bool isSupported =
      type == DFC_BUTTON && (state & ~(DFCS_CHECKED | DFCS_INACTIVE)) == DFCS_BUTTONCHECK;
  if (!isSupported) platform::LogLine("DrawFrameControl: only check boxes are drawn");
  if (!isSupported || area == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  const RECT square = platform::SquareIn(*area);
  const platform::CheckBoxLook look{(state & DFCS_CHECKED) != 0, (state & DFCS_INACTIVE) == 0};
  return found->Draw("DrawFrameControl", [&](platform::Canvas& canvas) {
    if (square.left < square.right) canvas.DrawCheckBox(square, look);
  });
} catch (...) {
  return platform::FailedCall(FALSE);
}
