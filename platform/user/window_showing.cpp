#include "platform/user/window_showing.h"

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/focus.h"
#include "platform/user/window_bounds.h"
#include "platform/user/window_relations.h"

namespace platform {
namespace {

void Hide(const std::shared_ptr<Window>& window) {
  window->SetStyleBit(WS_VISIBLE, false);
  LeaveWindow(*window);
  if (window->Peer() != nullptr) window->Peer()->SetShown(false);
}

void Show(const std::shared_ptr<Window>& window, bool activate) {
  window->SetStyleBit(WS_VISIBLE, true);
  if (window->Peer() != nullptr) {
    activate || window->IsChild() ? window->Peer()->SetShown(true) : window->Peer()->ShowInactive();
  }
  if (!window->KnowsBounds()) NotifyBounds(*window);
}

void SetEnabled(const std::shared_ptr<Window>& window, bool enabled) {
  if (!enabled) window->CallProcedure(WM_CANCELMODE, 0, 0);
  if (!window->IsLive()) return;
  window->SetStyleBit(WS_DISABLED, !enabled);
  if (!enabled) DropFocusWithin(*window);
  if (window->Peer() != nullptr) window->Peer()->SetEnabled(enabled);
  window->CallProcedure(WM_ENABLE, enabled ? TRUE : FALSE, 0);
}

}  // namespace

void SetShown(const std::shared_ptr<Window>& window, bool shown, bool activate) {
  if (window->IsShown() != shown) {
    window->CallProcedure(WM_SHOWWINDOW, shown ? TRUE : FALSE, 0);
    if (!window->IsLive()) return;
    shown ? Show(window, activate) : Hide(window);
  }
  if (shown && activate && !window->IsChild() && window->IsLive()) Activate(window);
}

bool IsShownWithParents(const Window& window) {
  const auto parent = window.IsChild() ? ParentOf(window) : nullptr;
  return window.IsShown() && (parent == nullptr || IsShownWithParents(*parent));
}

bool IsEnabledWithParents(const Window& window) {
  const auto parent = window.IsChild() ? ParentOf(window) : nullptr;
  return !window.IsDisabled() && (parent == nullptr || IsEnabledWithParents(*parent));
}

}  // namespace platform

using namespace platform;

BOOL WINAPI ShowWindow(HWND window, int command) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  const bool supported = command == SW_HIDE || command == SW_SHOW || command == SW_SHOWNORMAL ||
                         command == SW_SHOWNOACTIVATE;
  if (!supported) LogLine("ShowWindow: unsupported command " + std::to_string(command));
  bool wasShown = false;
  RunOnOwner(found, [&] {
    wasShown = found->IsShown();
    if (supported) SetShown(found, command != SW_HIDE, command != SW_SHOWNOACTIVATE);
  });
  return wasShown ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI IsWindowVisible(HWND window) try {
  const auto found = FindWindowOf(window);
  bool shown = false;
  if (found != nullptr) RunOnOwner(found, [&] { shown = IsShownWithParents(*found); });
  return shown ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI EnableWindow(HWND window, BOOL enable) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  bool wasDisabled = false;
  RunOnOwner(found, [&] {
    wasDisabled = found->IsDisabled();
    if (wasDisabled == (enable != FALSE)) SetEnabled(found, enable != FALSE);
  });
  return wasDisabled ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI IsWindowEnabled(HWND window) try {
  const auto found = FindWindowOf(window);
  bool enabled = false;
  if (found != nullptr) RunOnOwner(found, [&] { enabled = !found->IsDisabled(); });
  return enabled ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
