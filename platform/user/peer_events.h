// What the user does to a window, turned into its messages. Owned by the window, on the window
// thread. Nothing but painting is answered inside the desktop's event: mouse and keys wait in the
// thread's queue, all else is deferred, and the window looked up again then.
#pragma once

#include <optional>

#include "platform/user/window.h"

namespace platform {

class PeerEvents final : public WindowEvents {
 public:
  explicit PeerEvents(Window& window) : window_(window) {}

  void OnPaint(Canvas& canvas, const RECT& damaged, bool exposed) override;
  void OnCloseRequested() override;
  void OnBoundsChanged(const RECT& place) override;
  void OnActivationChanged(bool active) override;
  void OnFocusChanged(bool focused) override;
  void OnHelpRequested() override;
  void OnMouse(const MouseInput& input) override;
  bool OnKey(const KeyInput& input) override;
  void OnScroll(int bar, UINT request, int place) override;

 private:
  void DeferMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void NotifyBounds();

  Window& window_;
  // The place before the first change that the window's procedure has not been told of.
  std::optional<RECT> unsent_;
};

}  // namespace platform
