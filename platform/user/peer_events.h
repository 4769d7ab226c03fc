// Turns what a peer reports into window messages. Owned by the window, on the window thread. Only
// painting is handled inside the desktop's event. Mouse and keyboard input is queued, all else is
// deferred; both look the window up again when they are handled.
#pragma once

#include <optional>

#include "platform/user/window.h"

namespace platform {

class PeerEvents final : public WindowEvents {
 public:
  explicit PeerEvents(Window& window) : window_(window) {}

  void OnPaint(Canvas& canvas, const RECT& damaged, bool exposed) override;
  void OnCloseRequested() override;
  void OnBoundsChanged(const RECT& bounds) override;
  void OnActivationChanged(bool active) override;
  void OnFocusChanged(bool focused) override;
  void OnHelpRequested() override;
  void OnContextMenuRequested(POINT place) override;
  void OnMouse(const MouseInput& input) override;
  bool OnKey(const KeyInput& input) override;
  void OnScroll(int bar, UINT request, int position) override;

 private:
  void DeferMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void NotifyBounds();

  Window& window_;
  // The bounds as the window procedure last knew them; set while a notification is pending.
  std::optional<RECT> unsent_;
};

}  // namespace platform
