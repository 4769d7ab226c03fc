#include "platform/user/window_relations.h"

#include "platform/kernel/api_result.h"

namespace platform {
namespace {

HWND MakeDesktopWindow() {
  auto windowClass = std::make_shared<WindowClass>();
  windowClass->data.lpfnWndProc = ::DefWindowProcW;
  // A closed queue refuses everything that is posted or sent to the window.
  auto queue = std::make_shared<ThreadQueue>(0);
  queue->End();
  WindowOrigin origin;
  origin.windowClass = std::move(windowClass);
  origin.queue = std::move(queue);
  origin.style = WS_POPUP | WS_VISIBLE;
  auto window = std::make_shared<Window>(std::move(origin));
  window->TakeHandle(static_cast<HWND>(Handles().Insert(HandleKind::kWindow, window)));
  return window->Handle();
}

HWND DesktopWindow() {
  static const HWND window = MakeDesktopWindow();
  return window;
}

}  // namespace

std::shared_ptr<Window> ParentOf(const Window& window) {
  return Resolve<Window>(HandleKind::kWindow, window.Parent());
}

bool IsWithin(const Window& window, HWND ancestor) {
  if (window.Handle() == ancestor) return true;
  const auto parent = window.IsChild() ? ParentOf(window) : nullptr;
  return parent != nullptr && IsWithin(*parent, ancestor);
}

std::shared_ptr<Window> TopLevelOf(const std::shared_ptr<Window>& window) {
  std::shared_ptr<Window> found = window;
  while (found != nullptr && found->IsChild())
    found = ParentOf(*found);
  return found;
}

bool IsDesktopWindow(HWND window) {
  return window == DesktopWindow();
}

}  // namespace platform

using namespace platform;

HWND WINAPI GetDesktopWindow() try { return DesktopWindow(); } catch (...) {
  return FailedCall<HWND>(nullptr);
}

HWND WINAPI GetParent(HWND window) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr || IsDesktopWindow(window)) return nullptr;
  HWND parent = nullptr;
  RunOnOwner(found, [&] {
    const bool hasParent = (found->Style() & (WS_CHILD | WS_POPUP)) != 0;
    const auto parentOrOwner = hasParent ? ParentOf(*found) : nullptr;
    if (parentOrOwner != nullptr) parent = parentOrOwner->Handle();
  });
  return parent;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

BOOL WINAPI IsChild(HWND parent, HWND window) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr || FindWindowOf(parent) == nullptr) return FALSE;
  if (parent == window || IsDesktopWindow(window)) return FALSE;
  bool isChild = false;
  RunOnOwner(found, [&] { isChild = IsWithin(*found, parent); });
  return isChild ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
