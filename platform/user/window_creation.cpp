// Windows come to life here.
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/peer_events.h"
#include "platform/user/window.h"
#include "platform/user/window_destruction.h"
#include "platform/user/window_list.h"
#include "platform/user/window_place.h"
#include "platform/user/window_relations.h"
#include "platform/user/window_showing.h"

namespace platform {
namespace {

// Sets the last error when these cannot be the parent and the menu of a new window.
bool CheckRelations(HWND parent, HMENU menu, bool isChild) {
  if (isChild && (parent == nullptr || parent == HWND_MESSAGE)) {
    ::SetLastError(ERROR_TLW_WITH_WSCHILD);
    return false;
  }
  // A child's menu is its number.
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
  return found != nullptr ? found->peer.get() : nullptr;
}

// Null when the window is not for the desktop: of a thread without one, or for messages only.
std::unique_ptr<WindowPeer> MakePeer(Window& window) {
  if (window.parent == HWND_MESSAGE || WindowThread() != window.queue) return nullptr;
  WindowPeer* parent = PeerOf(window.parent);
  if (window.isChild && parent == nullptr) return nullptr;
  if (window.control != nullptr) return window.control->MakePeer(window, parent);
  WindowPeers& peers = Desktop().Windows();
  return window.isChild ? peers.MakeChild(*window.events, *parent)
                        : peers.MakeTopLevel(*window.events, parent);
}

void GivePeer(Window& window) {
  window.peer = MakePeer(window);
  if (window.peer == nullptr) return;
  window.peer->SetIdentity(window.handle, window.id);
  window.peer->SetText(window.text);
  window.peer->SetPlace(window.place);
  window.peer->SetEnabled((window.style & WS_DISABLED) == 0);
  ShowFirstScrollBars(window);
}

std::shared_ptr<Window> MakeWindow(const std::shared_ptr<const WindowClass>& windowClass,
                                   const CREATESTRUCTW& creation) {
  auto window = std::make_shared<Window>();
  window->windowClass = windowClass;
  window->queue = CurrentQueue();
  window->parent = creation.hwndParent;
  // It is shown, if at all, when it has been created.
  window->style = static_cast<DWORD>(creation.style) & ~WS_VISIBLE;
  window->isChild = (window->style & WS_CHILD) != 0;
  window->exStyle = creation.dwExStyle;
  window->place = PlaceAsGiven(creation.x, creation.y, creation.cx, creation.cy);
  window->id = window->isChild ? reinterpret_cast<UINT_PTR>(creation.hMenu) : 0;
  window->text = creation.lpszName != nullptr ? creation.lpszName : L"";
  window->procedure = windowClass->data.lpfnWndProc;
  window->events = std::make_unique<PeerEvents>(*window);
  return window;
}

// False when the window's procedure refused to be created, or destroyed the window.
bool SendCreation(const std::shared_ptr<Window>& window, const CREATESTRUCTW& creation) {
  const auto parameter = reinterpret_cast<LPARAM>(&creation);
  if (window->CallProcedure(WM_NCCREATE, 0, parameter) == FALSE) {
    // It never was a window to its procedure, so only the last message tells that it ends.
    if (window->IsLive()) DestroyUncreated(window);
    return false;
  }
  if (!window->IsLive()) return false;
  const bool refused = window->CallProcedure(WM_CREATE, 0, parameter) == -1;
  if (refused && window->IsLive()) DestroyWithAllItHas(window);
  if (window->isChild && window->IsLive()) TellPlace(*window);
  return window->IsLive();
}

}  // namespace
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
  // Every top-level window is the screen's anyway.
  if (!isChild && parent != nullptr && IsDesktopWindow(parent)) parent = nullptr;
  if (!CheckRelations(parent, menu, isChild)) return nullptr;
  JoinDesktop(CurrentQueue());
  const CREATESTRUCTW creation = {
      parameter,  instance,  menu,   parent, height, width, y, x, static_cast<LONG>(style),
      windowName, className, exStyle};
  const auto window = MakeWindow(windowClass, creation);
  Windows().Add(window);
  if (windowClass->system != nullptr) window->control = windowClass->system->make(*window);
  GivePeer(*window);
  if (!SendCreation(window, creation)) return nullptr;
  if ((style & WS_VISIBLE) != 0) SetShown(window, true, true);
  return window->IsLive() ? window->handle : nullptr;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}
