#include "platform/user/peer_events.h"

#include <utility>

#include "platform/user/context_help.h"
#include "platform/user/focus.h"
#include "platform/user/input.h"
#include "platform/user/painting.h"
#include "platform/user/window_bounds.h"

namespace platform {

void PeerEvents::DeferMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  window_.Queue()->Defer([handle = window_.Handle(), message, wParam, lParam] {
    if (::IsWindow(handle)) ::SendMessageW(handle, message, wParam, lParam);
  });
}

void PeerEvents::OnPaint(Canvas& canvas, const RECT& damaged, bool exposed) {
  const auto window = Resolve<Window>(HandleKind::kWindow, window_.Handle());
  if (window != nullptr) PaintWindow(window, canvas, damaged, exposed);
}

void PeerEvents::OnCloseRequested() {
  DeferMessage(WM_CLOSE, 0, 0);
}

void PeerEvents::OnBoundsChanged(const RECT& bounds) {
  // The desktop reports moving and sizing in several steps; the window procedure is notified once.
  const bool isUnderWay = unsent_.has_value();
  if (!isUnderWay) unsent_ = window_.Bounds();
  const RECT before = window_.Bounds();
  window_.NoteBounds(bounds);
  DamageAfterSizing(window_, before);
  if (isUnderWay) return;
  window_.Queue()->Defer([this, handle = window_.Handle()] {
    const auto window = Resolve<Window>(HandleKind::kWindow, handle);
    if (window != nullptr) NotifyBounds();
  });
}

void PeerEvents::NotifyBounds() {
  const RECT before = *unsent_;
  unsent_.reset();
  NotifyBoundsChange(window_, before);
}

void PeerEvents::OnActivationChanged(bool active) {
  ReportActivation(window_, active);
}

void PeerEvents::OnFocusChanged(bool focused) {
  ReportFocus(window_, focused);
}

void PeerEvents::OnHelpRequested() {
  RequestHelp(window_);
}

void PeerEvents::OnContextMenuRequested(POINT place) {
  DeferMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window_.Handle()),
               MAKELPARAM(place.x, place.y));
}

void PeerEvents::OnMouse(const MouseInput& input) {
  QueueMouse(window_, input);
}

bool PeerEvents::OnKey(const KeyInput& input) {
  // Dialogs, like most controls, handle keys inside the event.
  const Control* control = window_.SystemControl();
  if (control != nullptr && !control->TakesKeyMessages()) return false;
  QueueKey(window_, input);
  return true;
}

void PeerEvents::OnScroll(int bar, UINT request, int position) {
  const bool isOfThumb = request == SB_THUMBTRACK || request == SB_THUMBPOSITION;
  if (isOfThumb) window_.ScrollBars().at(static_cast<std::size_t>(bar)).tracked = position;
  DeferMessage(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL,
               MAKEWPARAM(request, isOfThumb ? position : 0), 0);
}

}  // namespace platform
