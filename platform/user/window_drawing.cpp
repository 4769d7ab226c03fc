#include "platform/user/window_drawing.h"

#include "platform/user/window.h"

namespace platform {

WindowDrawing DrawOnWindow(const std::shared_ptr<Window>& window,
                           const std::function<void(Canvas&)>& work) {
  bool isDrawn = false;
  const auto draw = [&] { isDrawn = window->peer != nullptr && window->peer->Draw(work); };
  bool isThere = window != nullptr && window->IsLive();
  // Drawing is done by the thousand, so its own thread does not go by the way of the others.
  if (isThere && window->BelongsToCaller()) {
    draw();
  } else if (isThere) {
    isThere = RunOnOwner(window, draw);
  }
  if (isThere) return isDrawn ? WindowDrawing::kDrawn : WindowDrawing::kNoSurface;
  ::SetLastError(ERROR_INVALID_HANDLE);
  return WindowDrawing::kNoWindow;
}

}  // namespace platform
