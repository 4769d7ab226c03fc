#include "platform/user/window_creation.h"

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/window_bounds.h"
#include "platform/user/window_destruction.h"
#include "platform/user/window_list.h"
#include "platform/user/window_relations.h"
#include "platform/user/window_showing.h"

namespace platform {
namespace {

// False, with the last error set, when these cannot be the parent and the menu of a new window.
bool CheckRelations(HWND parent, HMENU menu, bool isChild) {
  if (isChild && (parent == nullptr || parent == HWND_MESSAGE)) {
    ::SetLastError(ERROR_TLW_WITH_WSCHILD);
    return false;
  }
  // For a child the menu is its identifier.
  if (!isChild && menu != nullptr) {
    ::SetLastError(ERROR_INVALID_MENU_HANDLE);
    return false;
  }
  if (parent == nullptr || parent == HWND_MESSAGE) return true;
  const auto found = FindWindowOf(parent);
  if (found == nullptr) return false;
  if (found->BelongsToCaller()) return true;
  LogLine("CreateWindowExW: a parent of another thread: not supported");
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return false;
}

WindowPeer* PeerOf(HWND window) {
  const auto found = Resolve<Window>(HandleKind::kWindow, window);
  return found != nullptr ? found->Peer() : nullptr;
}

// Null when the window has no desktop: its thread is not the window thread, its parent has no peer,
// or it is message-only.
std::unique_ptr<WindowPeer> MakePeer(Window& window) {
  if (window.Parent() == HWND_MESSAGE || WindowThread() != window.Queue()) return nullptr;
  WindowPeer* parent = PeerOf(window.Parent());
  if (window.IsChild() && parent == nullptr) return nullptr;
  if (window.SystemControl() != nullptr) return window.SystemControl()->MakePeer(window, parent);
  WindowPeers& peers = Desktop().Windows();
  return window.IsChild() ? peers.MakeChild(window.Events(), *parent)
                          : peers.MakeTopLevel(window.Events(), parent);
}

std::shared_ptr<Window> MakeWindow(const std::shared_ptr<const WindowClass>& windowClass,
                                   const CREATESTRUCTW& creation) {
  WindowOrigin origin;
  origin.windowClass = windowClass;
  origin.queue = CurrentQueue();
  origin.parent = creation.hwndParent;
  // The window is shown, if at all, when its creation is complete.
  origin.style = static_cast<DWORD>(creation.style) & ~WS_VISIBLE;
  origin.exStyle = creation.dwExStyle;
  origin.bounds = BoundsAsGiven(creation.x, creation.y, creation.cx, creation.cy);
  const bool isChild = (origin.style & WS_CHILD) != 0;
  origin.id = isChild ? reinterpret_cast<UINT_PTR>(creation.hMenu) : 0;
  origin.text = creation.lpszName != nullptr ? creation.lpszName : L"";
  return std::make_shared<Window>(std::move(origin));
}

// False when the window's procedure refused the creation or destroyed the window.
bool SendCreation(const std::shared_ptr<Window>& window, const CREATESTRUCTW& creation) {
  const auto parameter = reinterpret_cast<LPARAM>(&creation);
  if (window->CallProcedure(WM_NCCREATE, 0, parameter) == FALSE) {
    // The window was never created for its procedure, which gets WM_NCDESTROY only.
    if (window->IsLive()) DestroyUncreated(window);
    return false;
  }
  if (!window->IsLive()) return false;
  const bool refused = window->CallProcedure(WM_CREATE, 0, parameter) == -1;
  if (refused && window->IsLive()) DestroyWithAllItHas(window);
  if (window->IsChild() && window->IsLive()) NotifyBounds(*window);
  return window->IsLive();
}

}  // namespace

void GivePeer(Window& window) {
  window.GivePeer(MakePeer(window));
  if (window.Peer() == nullptr) return;
  window.Peer()->SetIdentity(window.Handle(), window.Id());
  window.Peer()->SetText(window.Text());
  window.Peer()->SetBounds(window.Bounds());
  window.Peer()->SetEnabled((window.Style() & WS_DISABLED) == 0);
  ShowFirstScrollBars(window);
}

}  // namespace platform

using namespace platform;

HWND WINAPI CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style,
                            int x, int y, int width, int height, HWND parent, HMENU menu,
                            HINSTANCE instance, LPVOID parameter) try {
  const auto windowClass = FindWindowClass(instance, className);
  if (windowClass == nullptr) {
    ::SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
    return nullptr;
  }
  const bool isChild = (style & WS_CHILD) != 0;
  // The desktop window owns every top-level window anyway.
  if (!isChild && parent != nullptr && IsDesktopWindow(parent)) parent = nullptr;
  if (!CheckRelations(parent, menu, isChild)) return nullptr;
  JoinDesktop(CurrentQueue());
  const CREATESTRUCTW creation = {
      parameter,  instance,  menu,   parent, height, width, y, x, static_cast<LONG>(style),
      windowName, className, exStyle};
  const auto window = MakeWindow(windowClass, creation);
  Windows().Add(window);
  if (windowClass->system != nullptr) window->GiveControl(windowClass->system->make(*window));
  GivePeer(*window);
  if (!SendCreation(window, creation)) return nullptr;
  if ((style & WS_VISIBLE) != 0) SetShown(window, true, true);
  return window->IsLive() ? window->Handle() : nullptr;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}
