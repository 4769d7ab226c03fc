#include "platform/user/painting.h"

#include <utility>

#include "platform/gdi/rect.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/window_place.h"

namespace platform {

void PaintWindow(const std::shared_ptr<Window>& window, Canvas& canvas, const RECT& damaged,
                 bool exposed) {
  // Painting inside painting would draw on the same canvas.
  if (!window->IsLive() || window->painting != nullptr) return;
  Painting painting{canvas, damaged, nullptr};
  window->painting = &painting;
  window->mustErase = window->mustErase || exposed;
  window->CallProcedure(WM_PAINT, 0, 0);
  window->painting = nullptr;
}

void Damage(Window& window, const RECT& area, bool erase) {
  if (window.peer == nullptr) return;
  window.mustErase = window.mustErase || erase;
  // What is never painted would add up.
  const RECT seen = Intersection(area, ClientAreaOf(window));
  if (!IsEmpty(seen)) window.peer->Invalidate(seen);
}

bool EraseBackground(const Window& window, HDC context) {
  const HBRUSH brush = window.windowClass->data.hbrBackground;
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
                      if (found->peer != nullptr) found->peer->PaintNow();
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
  if (!found->BelongsToCaller() || found->painting == nullptr) return nullptr;
  Painting& painting = *found->painting;
  if (painting.context == nullptr) painting.context = std::make_unique<LentDc>(painting.canvas);
  *paint = {};
  paint->hdc = painting.context->Get();
  paint->rcPaint = painting.damaged;
  const auto context = reinterpret_cast<WPARAM>(paint->hdc);
  const bool erase = std::exchange(found->mustErase, false);
  // Who does not erase now is told that it is left to be done.
  if (erase) paint->fErase = found->CallProcedure(WM_ERASEBKGND, context, 0) == 0 ? TRUE : FALSE;
  return paint->hdc;
} catch (...) {
  return FailedCall<HDC>(nullptr);
}

BOOL WINAPI EndPaint(HWND window, const PAINTSTRUCT* /*paint*/) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  if (found->BelongsToCaller() && found->painting != nullptr) found->painting->context.reset();
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
