#include "platform/user/window_destruction.h"

#include "platform/kernel/api_result.h"
#include "platform/user/focus.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

// Sends WM_DESTROY to the window, then to its children.
void SendDestroy(const std::shared_ptr<Window>& window) {
  if (!window->IsLive() || window->IsBeingDestroyed()) return;
  window->NoteDestruction();
  window->CallProcedure(WM_DESTROY, 0, 0);
  for (const auto& child : Windows().ChildrenOf(window->Handle()))
    SendDestroy(child);
}

// Hides the window before its procedure gets WM_DESTROY.
void TakeOffScreen(const std::shared_ptr<Window>& window) {
  if (!window->IsChild()) window->SetStyleBit(WS_VISIBLE, false);
  LeaveWindow(*window);
  if (!window->IsChild() && window->Peer() != nullptr) window->Peer()->SetShown(false);
}

void EndPeerLater(const std::shared_ptr<Window>& window) {
  if (window->Peer() == nullptr) return;
  window->Peer()->SetShown(false);
  window->Queue()->Defer([window] { window->EndPeer(); });
}

// Sends WM_NCDESTROY to the children, then to the window, and removes them.
void SendLastMessage(const std::shared_ptr<Window>& window) {
  for (const auto& child : Windows().ChildrenOf(window->Handle()))
    SendLastMessage(child);
  if (!window->IsLive()) return;
  window->NoteDestruction();
  window->CallProcedure(WM_NCDESTROY, 0, 0);
  // A destruction in progress around this one may have removed the window meanwhile.
  if (!window->IsLive()) return;
  Windows().Remove(window);
  EndPeerLater(window);
}

}  // namespace

void DestroyWithAllItHas(const std::shared_ptr<Window>& window) {
  if (window->IsBeingDestroyed()) return;
  for (const auto& owned : Windows().OwnedBy(window->Handle())) {
    if (owned->IsLive()) DestroyWithAllItHas(owned);
  }
  TakeOffScreen(window);
  SendDestroy(window);
  SendLastMessage(window);
}

void DestroyUncreated(const std::shared_ptr<Window>& window) {
  SendLastMessage(window);
}

void ForgetWindowsOf(const ThreadQueue& queue) {
  for (const auto& window : Windows().OfThread(queue)) {
    Windows().Remove(window);
    window->EndPeer();
  }
}

}  // namespace platform

using namespace platform;

BOOL WINAPI DestroyWindow(HWND window) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  if (!found->BelongsToCaller()) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  DestroyWithAllItHas(found);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
