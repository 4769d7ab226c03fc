#include "platform/user/peer_events.h"

namespace platform {

void PeerEvents::DeferMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  window_.queue->Defer([handle = window_.handle, message, wParam, lParam] {
    if (::IsWindow(handle)) ::SendMessageW(handle, message, wParam, lParam);
  });
}

void PeerEvents::OnPaint(Canvas& /*canvas*/, const RECT& /*damaged*/) {}

void PeerEvents::OnCloseRequested() {
  DeferMessage(WM_CLOSE, 0, 0);
}

void PeerEvents::OnPlaceChanged(const RECT& place) {
  window_.place = place;
}

void PeerEvents::OnActivationChanged(bool /*active*/) {}

void PeerEvents::OnFocusChanged(bool /*focused*/) {}

void PeerEvents::OnHelpRequested() {}

}  // namespace platform
