#include "platform/user/window_relations.h"

#include "platform/kernel/api_result.h"

namespace platform {
namespace {

HWND MakeDesktopWindow() {
  auto window = std::make_shared<Window>();
  // A queue that has ended refuses whatever is posted or sent to the window.
  window->queue = std::make_shared<ThreadQueue>(0);
  window->queue->End();
  window->windowClass = std::make_shared<WindowClass>();
  window->procedure = ::DefWindowProcW;
  window->style = WS_POPUP | WS_VISIBLE;
  window->handle = static_cast<HWND>(Handles().Insert(HandleKind::kWindow, window));
  return window->handle;
}

HWND DesktopWindow() {
  static const HWND window = MakeDesktopWindow();
  return window;
}

}  // namespace

std::shared_ptr<Window> ParentOf(const Window& window) {
  return Resolve<Window>(HandleKind::kWindow, window.parent);
}

bool IsWithin(const Window& window, HWND ancestor) {
  if (window.handle == ancestor) return true;
  const auto parent = window.isChild ? ParentOf(window) : nullptr;
  return parent != nullptr && IsWithin(*parent, ancestor);
}

std::shared_ptr<Window> TopLevelOf(const std::shared_ptr<Window>& window) {
  std::shared_ptr<Window> found = window;
  while (found != nullptr && found->isChild)
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
    const bool hasParent = (found->style & (WS_CHILD | WS_POPUP)) != 0;
    const auto holder = hasParent ? ParentOf(*found) : nullptr;
    if (holder != nullptr) parent = holder->handle;
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
