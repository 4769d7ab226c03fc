#include "platform/user/focus.h"

#include "platform/kernel/api_result.h"
#include "platform/user/window_relations.h"
#include "platform/user/window_showing.h"

namespace platform {
namespace {

struct FocusState {
  // As last sent to the window procedures.
  HWND focus = nullptr;
  HWND active = nullptr;
  // As last reported by the desktop.
  HWND reportedFocus = nullptr;
  HWND reportedActive = nullptr;
};
thread_local FocusState state;

std::shared_ptr<Window> Find(HWND window) {
  return Resolve<Window>(HandleKind::kWindow, window);
}

void Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto found = Find(window);
  if (found != nullptr) found->CallProcedure(message, wParam, lParam);
}

// Returns the window that had the focus before.
HWND MoveFocus(HWND window) {
  const HWND before = state.focus;
  if (before == window) return before;
  state.focus = window;
  Send(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
  const auto found = Find(window);
  // The procedure that got WM_KILLFOCUS may have moved the focus elsewhere.
  if (found == nullptr || state.focus != window) return before;
  if (found->Peer() != nullptr && state.reportedFocus != window) found->Peer()->Focus();
  found->CallProcedure(WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
  return before;
}

bool IsFocusWithin(HWND window) {
  const auto focused = Find(state.focus);
  return focused != nullptr && IsWithin(*focused, window);
}

void MoveActivation(HWND window) {
  const HWND before = state.active;
  if (before == window) return;
  state.active = window;
  Send(before, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(window));
  if (state.active != window || window == nullptr) return;
  Send(window, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(before));
  const bool stays = state.active == window && Find(window) != nullptr;
  if (!stays || IsFocusWithin(window)) return;
  // The desktop restores the focus to the child that had it last.
  const auto reported = Find(state.reportedFocus);
  const bool isReported = reported != nullptr && IsWithin(*reported, window);
  MoveFocus(isReported ? state.reportedFocus : window);
}

void SettleFocus(HWND window) {
  const bool lost = state.focus == window && state.reportedFocus != window;
  const bool gained = state.focus != window && state.reportedFocus == window;
  const auto found = gained ? Find(window) : nullptr;
  const auto top = found != nullptr ? TopLevelOf(found) : nullptr;
  // A hidden window may be the active one here, which the desktop does not report.
  if (top != nullptr && state.reportedActive == top->Handle()) MoveActivation(top->Handle());
  if (lost || gained) MoveFocus(state.reportedFocus);
}

void SettleActivation(HWND window) {
  const bool lost = state.active == window && state.reportedActive != window;
  const bool gained = state.active != window && state.reportedActive == window;
  if (lost || gained) MoveActivation(state.reportedActive);
}

}  // namespace

void Activate(const std::shared_ptr<Window>& window) {
  if (window->Peer() != nullptr && state.reportedActive != window->Handle())
    window->Peer()->Activate();
  MoveActivation(window->Handle());
}

void LeaveWindow(const Window& window) {
  if (window.IsChild()) {
    if (IsFocusWithin(window.Handle())) MoveFocus(window.Parent());
    return;
  }
  if (state.active == window.Handle()) {
    const auto owner = ParentOf(window);
    const auto next = owner != nullptr ? TopLevelOf(owner) : nullptr;
    const bool canBeActive = next != nullptr && next->IsShown() && !next->IsDisabled();
    if (canBeActive) {
      Activate(next);
    } else {
      MoveActivation(nullptr);
    }
  }
  DropFocusWithin(window);
}

void DropFocusWithin(const Window& window) {
  if (IsFocusWithin(window.Handle())) MoveFocus(nullptr);
}

void ReportFocus(const Window& window, bool focused) {
  if (focused) state.reportedFocus = window.Handle();
  if (!focused && state.reportedFocus == window.Handle()) state.reportedFocus = nullptr;
  window.Queue()->Defer([handle = window.Handle()] { SettleFocus(handle); });
}

void ReportActivation(const Window& window, bool active) {
  if (active) state.reportedActive = window.Handle();
  if (!active && state.reportedActive == window.Handle()) state.reportedActive = nullptr;
  window.Queue()->Defer([handle = window.Handle()] { SettleActivation(handle); });
}

}  // namespace platform

using namespace platform;

HWND WINAPI SetFocus(HWND window) try {
  if (window == nullptr) return MoveFocus(nullptr);
  const auto found = FindWindowOf(window);
  if (found == nullptr) return nullptr;
  if (!found->BelongsToCaller()) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
  }
  if (!IsEnabledWithParents(*found)) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const HWND before = state.focus;
  const auto top = TopLevelOf(found);
  // The top-level window is active before the window inside it gets the focus.
  if (top != nullptr && top->IsShown()) Activate(top);
  if (found->IsLive()) MoveFocus(window);
  return before;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

HWND WINAPI GetFocus() try {
  return Find(state.focus) != nullptr ? state.focus : nullptr;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

HWND WINAPI GetActiveWindow() try {
  return Find(state.active) != nullptr ? state.active : nullptr;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

BOOL WINAPI SetForegroundWindow(HWND window) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr || IsDesktopWindow(window)) return FALSE;
  bool activated = false;
  RunOnOwner(found, [&] {
    activated = !found->IsChild() && !found->IsDisabled();
    if (activated) Activate(found);
  });
  return activated ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
