#include "platform/user/painting.h"

#include <utility>

#include "platform/gdi/rect.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/window_bounds.h"

namespace platform {

void PaintWindow(const std::shared_ptr<Window>& window, Canvas& canvas, const RECT& damaged,
                 bool exposed) {
  // A nested WM_PAINT would draw on the same canvas.
  if (!window->IsLive() || window->CurrentPainting() != nullptr) return;
  Painting painting{canvas, damaged, nullptr};
  window->SetPainting(&painting);
  window->RequireErasing(exposed);
  window->CallProcedure(WM_PAINT, 0, 0);
  window->SetPainting(nullptr);
}

void Damage(Window& window, const RECT& area, bool erase) {
  if (window.Peer() == nullptr) return;
  window.RequireErasing(erase);
  // Areas outside the client area would pile up, since they are never painted.
  const RECT seen = Intersection(area, ClientAreaOf(window));
  if (!IsEmpty(seen)) window.Peer()->Invalidate(seen);
}

bool EraseBackground(const Window& window, HDC context) {
  const HBRUSH brush = window.Class()->data.hbrBackground;
  if (brush == nullptr) return false;
  const RECT area = ClientAreaOf(window);
  return ::FillRect(context, &area, brush) != 0;
}

}  // namespace platform

using namespace platform;

BOOL WINAPI InvalidateRect(HWND window, const RECT* area, BOOL erase) try {
  if (window == nullptr) {
    LogLine("InvalidateRect: all windows at once: not supported");
    ::SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return FALSE;
  }
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  return RunOnOwner(found,
                    [&] {
                      Damage(*found, area != nullptr ? *area : ClientAreaOf(*found),
                             erase != FALSE);
                    })
             ? TRUE
             : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI UpdateWindow(HWND window) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  return RunOnOwner(found,
                    [&] {
                      if (found->Peer() != nullptr) found->Peer()->PaintNow();
                    })
             ? TRUE
             : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

HDC WINAPI BeginPaint(HWND window, LPPAINTSTRUCT paint) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr || paint == nullptr) return nullptr;
  // Outside of WM_PAINT there is nothing to paint on.
  if (!found->BelongsToCaller() || found->CurrentPainting() == nullptr) return nullptr;
  Painting& painting = *found->CurrentPainting();
  if (painting.context == nullptr) painting.context = std::make_unique<LentDc>(painting.canvas);
  *paint = {};
  paint->hdc = painting.context->Get();
  paint->rcPaint = painting.damaged;
  const auto context = reinterpret_cast<WPARAM>(paint->hdc);
  const bool erase = found->TakeErasing();
  // fErase leaves the erasing to the caller when WM_ERASEBKGND was not handled.
  if (erase) paint->fErase = found->CallProcedure(WM_ERASEBKGND, context, 0) == 0 ? TRUE : FALSE;
  return paint->hdc;
} catch (...) {
  return FailedCall<HDC>(nullptr);
}

BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* /*paint*/) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  if (found->BelongsToCaller() && found->CurrentPainting() != nullptr)
    found->CurrentPainting()->context.reset();
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
