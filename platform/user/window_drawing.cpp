#include "platform/user/window_drawing.h"

#include "platform/user/window.h"

namespace platform {

WindowDrawing DrawOnWindow(const std::shared_ptr<Window>& window,
                           const std::function<void(Canvas&)>& work) {
  bool isDrawn = false;
  const auto draw = [&] { isDrawn = window->peer != nullptr && window->peer->Draw(work); };
  if (window == nullptr || !window->IsLive() || !RunOnOwner(window, draw)) {
    ::SetLastError(ERROR_INVALID_HANDLE);
    return WindowDrawing::kNoWindow;
  }
  return isDrawn ? WindowDrawing::kDrawn : WindowDrawing::kNoSurface;
}

}  // namespace platform
