// What the keyboard does in a dialog, beyond what its controls do with it.
#include "platform/dialog/default_button.h"
#include "platform/dialog/dialog_control.h"
#include "platform/dialog/dialog_order.h"

namespace platform {
namespace {

// What a control may ask for besides the codes that the system's own controls answer.
constexpr LRESULT kWantsTab = 0x0002;      // DLGC_WANTTAB
constexpr LRESULT kWantsAllKeys = 0x0004;  // DLGC_WANTALLKEYS

LRESULT CodeThatKeeps(DialogKey key) {
  switch (key) {
    case DialogKey::kTab:
    case DialogKey::kBackTab:
      return kWantsTab | kWantsAllKeys;
    case DialogKey::kForward:
    case DialogKey::kBackward:
      return DLGC_WANTARROWS | kWantsAllKeys;
    default:
      return kWantsAllKeys;
  }
}

bool IsAutomaticRadio(const Window& control) {
  const bool isRadio = (DialogCodeOf(control.handle) & DLGC_RADIOBUTTON) != 0;
  return isRadio && (control.style & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
}

}  // namespace

bool DialogControl::OnDialogKey(DialogKey key, HWND focus) {
  if ((DialogCodeOf(focus) & CodeThatKeeps(key)) != 0) return false;
  const HWND dialog = window_.handle;
  switch (key) {
    case DialogKey::kTab:
    case DialogKey::kBackTab:
      return MoveByTab(focus, key == DialogKey::kTab);
    case DialogKey::kForward:
    case DialogKey::kBackward:
      return MoveInGroup(focus, key == DialogKey::kForward);
    case DialogKey::kEnter:
      window_.queue->Defer([dialog, focus] { PressDefaultButton(dialog, focus); });
      return true;
    case DialogKey::kEscape:
      window_.queue->Defer([dialog] { PressCancel(dialog); });
      return true;
    case DialogKey::kNextPage:
    case DialogKey::kPreviousPage:
      return TurnPage(key == DialogKey::kNextPage ? 1 : -1);
  }
  return false;
}

void DialogControl::OnFocusMoved(HWND focus) {
  window_.queue->Defer([dialog = window_.handle, focus] {
    if (::IsWindow(dialog)) MarkDefaultButton(dialog, focus);
  });
}

bool DialogControl::TurnPage(int step) {
  if (!turnPage_) return false;
  window_.queue->Defer([dialog = window_.handle, step] {
    const FoundDialog found = FindDialog(dialog);
    if (found.control != nullptr) found.control->turnPage_(step);
  });
  return true;
}

// With nowhere to go the key is the dialog's all the same: what holds the keyboard shall not take
// it for input.
bool DialogControl::MoveByTab(HWND focus, bool forward) {
  const auto next = NextTabStop(window_.handle, focus, forward);
  if (next != nullptr) FocusByKey(*next, forward);
  return true;
}

bool DialogControl::MoveInGroup(HWND focus, bool forward) {
  const auto next = NextInGroup(window_.handle, focus, forward);
  if (next == nullptr || next->handle == focus) return true;
  FocusByKey(*next, forward);
  if (IsAutomaticRadio(*next)) {
    window_.queue->Defer([control = next->handle] { ::SendMessageW(control, BM_CLICK, 0, 0); });
  }
  return true;
}

void DialogControl::FocusByKey(Window& control, bool forward) {
  if (window_.peer == nullptr || control.peer == nullptr) return;
  static_cast<DialogPeer&>(*window_.peer).FocusByTab(*control.peer, forward);
}

}  // namespace platform
