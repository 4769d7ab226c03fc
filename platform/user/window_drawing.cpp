// Device contexts of windows and of the screen, for drawing outside of WM_PAINT. Any thread; the
// drawing runs on the window's thread.
#include <windows.h>

#include <functional>
#include <memory>

#include "platform/gdi/device_context.h"
#include "platform/kernel/api_result.h"
#include "platform/user/window.h"

namespace platform {
namespace {

Drawing DrawOnWindow(const std::shared_ptr<Window>& window,
                     const std::function<void(Canvas&)>& work) {
  bool isDrawn = false;
  const auto draw = [&] { isDrawn = window->Peer() != nullptr && window->Peer()->Draw(work); };
  bool isThere = window != nullptr && window->IsLive();
  // A direct call on the window's own thread: drawing functions are called very often.
  if (isThere && window->BelongsToCaller()) {
    draw();
  } else if (isThere) {
    isThere = RunOnOwner(window, draw);
  }
  if (isThere) return isDrawn ? Drawing::kDone : Drawing::kNoSurface;
  ::SetLastError(ERROR_INVALID_HANDLE);
  return Drawing::kGone;
}

// The context does not keep the window alive.
DrawOnTarget DrawingOn(const std::shared_ptr<Window>& window) {
  return [target = std::weak_ptr(window)](const std::function<void(Canvas&)>& work) {
    return DrawOnWindow(target.lock(), work);
  };
}

}  // namespace
}  // namespace platform

using namespace platform;

HDC WINAPI GetDC(HWND window) try {
  using Kind = DeviceContext::Kind;
  if (window == nullptr) return MakeContext(std::make_shared<DeviceContext>(Kind::kScreen));
  const auto found = FindWindowOf(window);
  if (found == nullptr) return nullptr;
  return MakeContext(std::make_shared<DeviceContext>(DrawingOn(found)));
} catch (...) {
  return FailedCall<HDC>(nullptr);
}

int WINAPI ReleaseDC(HWND /*window*/, HDC context) try {
  using Kind = DeviceContext::Kind;
  return EndContext(context, {Kind::kScreen, Kind::kWindow}) ? 1 : 0;
} catch (...) {
  return FailedCall(0);
}
