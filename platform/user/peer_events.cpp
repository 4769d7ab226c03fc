#include "platform/user/peer_events.h"

#include "platform/dialog/context_help.h"
#include "platform/user/focus.h"
#include "platform/user/painting.h"
#include "platform/user/window_place.h"

namespace platform {

void PeerEvents::DeferMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  window_.queue->Defer([handle = window_.handle, message, wParam, lParam] {
    if (::IsWindow(handle)) ::SendMessageW(handle, message, wParam, lParam);
  });
}

void PeerEvents::OnPaint(Canvas& canvas, const RECT& damaged) {
  const auto window = Resolve<Window>(HandleKind::kWindow, window_.handle);
  if (window != nullptr) PaintWindow(window, canvas, damaged);
}

void PeerEvents::OnCloseRequested() {
  DeferMessage(WM_CLOSE, 0, 0);
}

void PeerEvents::OnPlaceChanged(const RECT& place) {
  const RECT before = window_.place;
  window_.place = place;
  window_.queue->Defer([handle = window_.handle, before] {
    const auto window = Resolve<Window>(HandleKind::kWindow, handle);
    if (window != nullptr) TellPlaceChange(*window, before);
  });
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

}  // namespace platform
