#include "platform/dialog/dialog_order.h"

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

bool IsDialog(const Window& window) {
  return window.SystemControl() != nullptr && window.Class()->name == L"#32770";
}

bool IsPage(const Window& window) {
  return IsDialog(window) && (window.Style() & DS_CONTROL) != 0;
}

void AddControlsOf(HWND dialog, std::vector<WindowPointer>& controls) {
  for (const auto& child : Windows().ChildrenOf(dialog)) {
    if (!IsPage(*child)) {
      controls.push_back(child);
    } else if (TakesInput(*child)) {
      AddControlsOf(child->Handle(), controls);
    }
  }
}

bool IsTabStop(const Window& control) {
  return (control.Style() & WS_TABSTOP) != 0 && TakesInput(control);
}

// The controls after `from`, or from the first, and `from` itself last; in reverse order if not
// `forward`.
std::vector<WindowPointer> InSearchOrder(std::vector<WindowPointer> controls, HWND from,
                                         bool forward) {
  if (!forward) std::ranges::reverse(controls);
  const auto start = std::ranges::find(controls, from, &Window::Handle);
  if (start != controls.end()) std::rotate(controls.begin(), std::next(start), controls.end());
  return controls;
}

std::vector<WindowPointer> GroupOf(const std::vector<WindowPointer>& controls,
                                   std::vector<WindowPointer>::const_iterator member) {
  const auto startsGroup = [](const WindowPointer& each) {
    return (each->Style() & WS_GROUP) != 0;
  };
  auto first = member;
  while (first != controls.begin() && !startsGroup(*first))
    --first;
  return {first, std::find_if(std::next(member), controls.end(), startsGroup)};
}

}  // namespace

std::vector<WindowPointer> ControlsOf(HWND dialog) {
  std::vector<WindowPointer> controls;
  AddControlsOf(dialog, controls);
  return controls;
}

bool TakesInput(const Window& control) {
  return (control.Style() & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

WindowPointer NextTabStop(HWND dialog, HWND control, bool forward) {
  for (const auto& each : InSearchOrder(ControlsOf(dialog), control, forward)) {
    if (IsTabStop(*each)) return each;
  }
  return nullptr;
}

WindowPointer NextInGroup(HWND dialog, HWND control, bool forward) {
  const std::vector<WindowPointer> controls = ControlsOf(dialog);
  const auto found = std::ranges::find(controls, control, &Window::Handle);
  if (found == controls.end()) return nullptr;
  for (const auto& each : InSearchOrder(GroupOf(controls, found), control, forward)) {
    const bool isStatic = (ControlCodeOf(each->Handle()) & DLGC_STATIC) != 0;
    if (TakesInput(*each) && !isStatic) return each;
  }
  return nullptr;
}

LRESULT DialogCodeOf(HWND window) {
  const auto found = Resolve<Window>(HandleKind::kWindow, window);
  if (found == nullptr) return 0;
  return found->SystemControl() != nullptr ? ControlCodeOf(window)
                                           : found->CallProcedure(WM_GETDLGCODE, 0, 0);
}

LRESULT ControlCodeOf(HWND window) {
  const auto found = Resolve<Window>(HandleKind::kWindow, window);
  if (found == nullptr || found->SystemControl() == nullptr || IsDialog(*found)) return 0;
  return found->SystemControl()->Answer(WM_GETDLGCODE, 0, 0).value_or(0);
}

}  // namespace platform

using namespace platform;

HWND WINAPI GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) try {
  if (FindWindowOf(dialog) == nullptr) return nullptr;
  const WindowPointer next = NextTabStop(dialog, control, previous == FALSE);
  return next != nullptr ? next->Handle() : control;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}
