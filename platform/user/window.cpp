#include "platform/user/window.h"

#include "platform/kernel/api_result.h"
#include "platform/user/window_list.h"

namespace platform {

bool Window::BelongsToCaller() const {
  return queue->ThreadId() == ::GetCurrentThreadId();
}

bool Window::IsLive() const {
  return Handles().Find(HandleKind::kWindow, handle).get() == this;
}

LRESULT Window::CallProcedure(UINT message, WPARAM wParam, LPARAM lParam) const {
  return procedure.load()(handle, message, wParam, lParam);
}

bool RunOnOwner(const std::shared_ptr<Window>& window, const std::function<void()>& work) {
  if (window->BelongsToCaller()) {
    work();
    return true;
  }
  bool ran = false;
  window->queue->Call([&] {
    ran = window->IsLive();
    if (ran) work();
  });
  if (!ran) ::SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return ran;
}

std::shared_ptr<Window> FindWindowOf(HWND handle) {
  auto window = Resolve<Window>(HandleKind::kWindow, handle);
  if (window == nullptr) ::SetLastError(ERROR_INVALID_WINDOW_HANDLE);
  return window;
}

bool BelongsToCaller(HWND handle) {
  if (handle == nullptr) return true;
  const auto window = FindWindowOf(handle);
  if (window == nullptr) return false;
  if (window->BelongsToCaller()) return true;
  ::SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
  return false;
}

bool ClassHasWindows(const WindowClass& windowClass) {
  return Windows().HasClass(windowClass);
}

}  // namespace platform

using namespace platform;

BOOL WINAPI IsWindow(HWND window) try {
  return FindWindowOf(window) != nullptr ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
