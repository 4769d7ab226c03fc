#include "platform/user/window.h"

#include <utility>

#include "platform/gdi/gdi_objects.h"
#include "platform/kernel/api_result.h"
#include "platform/user/peer_events.h"
#include "platform/user/window_list.h"

namespace platform {

Window::Window(WindowOrigin origin)
    : windowClass_(std::move(origin.windowClass)),
      queue_(std::move(origin.queue)),
      parent_(origin.parent),
      isChild_((origin.style & WS_CHILD) != 0),
      procedure_(windowClass_->data.lpfnWndProc),
      style_(origin.style),
      exStyle_(origin.exStyle),
      bounds_(origin.bounds),
      id_(origin.id),
      text_(std::move(origin.text)),
      events_(std::make_unique<PeerEvents>(*this)) {}

bool Window::BelongsToCaller() const {
  return queue_->ThreadId() == ::GetCurrentThreadId();
}

bool Window::IsLive() const {
  return Handles().Find(HandleKind::kWindow, handle_).get() == this;
}

LRESULT Window::CallProcedure(UINT message, WPARAM wParam, LPARAM lParam) const {
  return Procedure()(handle_, message, wParam, lParam);
}

void Window::SetText(std::wstring text) {
  text_ = std::move(text);
  if (peer_ != nullptr) peer_->SetText(text_);
}

void Window::SetId(UINT_PTR id) {
  id_ = id;
  if (peer_ != nullptr) peer_->SetIdentity(handle_, id_);
}

void Window::SetBounds(const RECT& bounds) {
  bounds_ = bounds;
  if (peer_ != nullptr) peer_->SetBounds(bounds_);
}

void Window::SetFont(HFONT font) {
  font_ = font;
  const auto description = FontOf(font);
  if (peer_ != nullptr && description.has_value()) peer_->SetFont(*description);
}

bool RunOnOwner(const std::shared_ptr<Window>& window, const std::function<void()>& work) {
  if (window->BelongsToCaller()) {
    work();
    return true;
  }
  bool ran = false;
  window->Queue()->Call([&] {
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
