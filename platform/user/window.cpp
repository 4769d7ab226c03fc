#include "platform/user/window.h"

#include <utility>

#include "platform/user/window_list.h"

namespace platform {
namespace {

LONG_PTR* ExtraOf(const Window& window, int index) {
  return index >= 0 && window.control != nullptr ? window.control->Extra(index) : nullptr;
}

}  // namespace

bool Window::BelongsToCaller() const {
  return queue->ThreadId() == ::GetCurrentThreadId();
}

bool Window::IsLive() const {
  return Handles().Find(HandleKind::kWindow, handle).get() == this;
}

LRESULT Window::CallProcedure(UINT message, WPARAM wParam, LPARAM lParam) const {
  return procedure.load()(handle, message, wParam, lParam);
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

BOOL WINAPI IsWindow(HWND window) {
  return FindWindowOf(window) != nullptr ? TRUE : FALSE;
}

DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD processId) {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  if (processId != nullptr) *processId = ::GetCurrentProcessId();
  return found->queue->ThreadId();
}

LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index) {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  if (index == GWLP_USERDATA) return found->userData.load();
  if (index == GWLP_WNDPROC) return reinterpret_cast<LONG_PTR>(found->procedure.load());
  if (const LONG_PTR* extra = ExtraOf(*found, index)) return *extra;
  ::SetLastError(ERROR_INVALID_INDEX);
  return 0;
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value) {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  if (index == GWLP_USERDATA) return found->userData.exchange(value);
  if (index == GWLP_WNDPROC && value != 0) {
    return reinterpret_cast<LONG_PTR>(found->procedure.exchange(reinterpret_cast<WNDPROC>(value)));
  }
  if (LONG_PTR* extra = ExtraOf(*found, index)) return std::exchange(*extra, value);
  ::SetLastError(index == GWLP_WNDPROC ? ERROR_INVALID_PARAMETER : ERROR_INVALID_INDEX);
  return 0;
}

LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  if (FindWindowOf(window) == nullptr) return 0;
  switch (message) {
    case WM_NCCREATE:        // creation goes on
    case WM_POWERBROADCAST:  // a suspension is allowed
      return TRUE;
    default:
      return 0;
  }
}
