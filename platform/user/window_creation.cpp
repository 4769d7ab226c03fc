// Windows come to life and end here.
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/window.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

// Sets the last error when these cannot be the parent and the menu of a new window.
bool CheckRelations(HWND parent, HMENU menu, bool isChild) {
  if (isChild && (parent == nullptr || parent == HWND_MESSAGE)) {
    ::SetLastError(ERROR_TLW_WITH_WSCHILD);
    return false;
  }
  // A child's menu is its number, of which nothing is kept.
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

// First the window, then its children.
void SendDestroy(const std::shared_ptr<Window>& window) {
  if (!window->IsLive() || window->isBeingDestroyed) return;
  window->isBeingDestroyed = true;
  window->CallProcedure(WM_DESTROY, 0, 0);
  for (const auto& child : Windows().ChildrenOf(window->handle))
    SendDestroy(child);
}

// First the children, then the window.
void SendLastMessage(const std::shared_ptr<Window>& window) {
  for (const auto& child : Windows().ChildrenOf(window->handle))
    SendLastMessage(child);
  if (!window->IsLive()) return;
  window->isBeingDestroyed = true;
  window->CallProcedure(WM_NCDESTROY, 0, 0);
  // A destruction that was under way around this one may have ended the window meanwhile.
  if (window->IsLive()) Windows().Remove(window);
}

void Destroy(const std::shared_ptr<Window>& window) {
  for (const auto& owned : Windows().OwnedBy(window->handle)) {
    if (owned->IsLive() && !owned->isBeingDestroyed) Destroy(owned);
  }
  SendDestroy(window);
  SendLastMessage(window);
}

// False when the window's procedure refused to be created, or destroyed the window.
bool SendCreation(const std::shared_ptr<Window>& window, const CREATESTRUCTW& creation) {
  const auto parameter = reinterpret_cast<LPARAM>(&creation);
  if (window->CallProcedure(WM_NCCREATE, 0, parameter) == FALSE) {
    // It never was a window to its procedure, so only the last message tells that it ends.
    if (window->IsLive()) SendLastMessage(window);
    return false;
  }
  if (!window->IsLive()) return false;
  if (window->CallProcedure(WM_CREATE, 0, parameter) == -1 && window->IsLive()) Destroy(window);
  return window->IsLive();
}

}  // namespace

void ForgetWindowsOf(const ThreadQueue& queue) {
  for (const auto& window : Windows().OfThread(queue))
    Windows().Remove(window);
}

}  // namespace platform

using namespace platform;

HWND WINAPI CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style,
                            int x, int y, int width, int height, HWND parent, HMENU menu,
                            HINSTANCE instance, LPVOID parameter) {
  const auto windowClass = FindWindowClass(instance, className);
  if (windowClass == nullptr) {
    ::SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
    return nullptr;
  }
  const bool isChild = (style & WS_CHILD) != 0;
  if (!CheckRelations(parent, menu, isChild)) return nullptr;
  JoinDesktop(CurrentQueue());

  const auto window = std::make_shared<Window>();
  window->windowClass = windowClass;
  window->queue = CurrentQueue();
  window->parent = parent;
  window->isChild = isChild;
  window->procedure = windowClass->data.lpfnWndProc;
  Windows().Add(window);
  const CREATESTRUCTW creation = {
      parameter,  instance,  menu,   parent, height, width, y, x, static_cast<LONG>(style),
      windowName, className, exStyle};
  return SendCreation(window, creation) ? window->handle : nullptr;
}

BOOL WINAPI DestroyWindow(HWND window) {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  if (!found->BelongsToCaller()) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  // A window that is on its way out is not destroyed twice.
  if (!found->isBeingDestroyed) Destroy(found);
  return TRUE;
}
