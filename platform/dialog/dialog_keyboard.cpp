// Keyboard navigation in a dialog: the keys that the dialog handles for its controls.
#include "platform/dialog/default_button.h"
#include "platform/dialog/dialog_control.h"
#include "platform/dialog/dialog_order.h"
#include "platform/kernel/api_result.h"

namespace platform {
namespace {

LRESULT CodeThatKeeps(DialogKey key) {
  switch (key) {
    case DialogKey::kTab:
    case DialogKey::kBackTab:
      return DLGC_WANTTAB | DLGC_WANTALLKEYS;
    case DialogKey::kForward:
    case DialogKey::kBackward:
      return DLGC_WANTARROWS | DLGC_WANTALLKEYS;
    default:
      return DLGC_WANTALLKEYS;
  }
}

std::optional<DialogKey> PlainKey(WPARAM virtualKey, bool shift) {
  switch (virtualKey) {
    case VK_TAB:
      return shift ? DialogKey::kBackTab : DialogKey::kTab;
    case VK_RIGHT:
    case VK_DOWN:
      return DialogKey::kForward;
    case VK_LEFT:
    case VK_UP:
      return DialogKey::kBackward;
    case VK_RETURN:
      return DialogKey::kEnter;
    case VK_ESCAPE:
      return DialogKey::kEscape;
    default:
      return std::nullopt;
  }
}

std::optional<DialogKey> ControlKey(WPARAM virtualKey, bool shift) {
  switch (virtualKey) {
    case VK_TAB:
      return shift ? DialogKey::kPreviousPage : DialogKey::kNextPage;
    case VK_NEXT:
      return DialogKey::kNextPage;
    case VK_PRIOR:
      return DialogKey::kPreviousPage;
    default:
      return std::nullopt;
  }
}

std::optional<DialogKey> DialogKeyOf(WPARAM virtualKey) {
  const bool shift = ::GetKeyState(VK_SHIFT) < 0;
  const bool control = ::GetKeyState(VK_CONTROL) < 0;
  return control ? ControlKey(virtualKey, shift) : PlainKey(virtualKey, shift);
}

bool IsAutomaticRadio(const Window& control) {
  const bool isRadio = (ControlCodeOf(control.Handle()) & DLGC_RADIOBUTTON) != 0;
  return isRadio && (control.Style() & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
}

}  // namespace

bool DialogControl::OnDialogKey(DialogKey key, HWND focus) {
  return TakeKey(key, focus, ControlCodeOf(focus));
}

bool DialogControl::TakeKeyMessage(MSG& message) {
  if (message.message != WM_KEYDOWN) return false;
  const auto key = DialogKeyOf(message.wParam);
  if (!key.has_value()) return false;
  const LRESULT code = ::SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam,
                                      reinterpret_cast<LPARAM>(&message));
  return TakeKey(*key, message.hwnd, code);
}

bool DialogControl::TakeKey(DialogKey key, HWND focus, LRESULT code) {
  if ((code & CodeThatKeeps(key)) != 0) return false;
  const HWND dialog = window_.Handle();
  switch (key) {
    case DialogKey::kTab:
    case DialogKey::kBackTab:
      return MoveByTab(focus, key == DialogKey::kTab);
    case DialogKey::kForward:
    case DialogKey::kBackward:
      return MoveInGroup(focus, key == DialogKey::kForward);
    case DialogKey::kEnter:
      window_.Queue()->Defer([dialog, focus] { PressDefaultButton(dialog, focus); });
      return true;
    case DialogKey::kEscape:
      window_.Queue()->Defer([dialog] { PressCancel(dialog); });
      return true;
    case DialogKey::kNextPage:
    case DialogKey::kPreviousPage:
      return TurnPage(key == DialogKey::kNextPage ? 1 : -1);
  }
  return false;
}

void DialogControl::OnFocusMoved(HWND focus) {
  window_.Queue()->Defer([dialog = window_.Handle(), focus] {
    // The focus may have moved on meanwhile, as when a page is hidden and another one shown.
    if (::IsWindow(dialog) && ::GetFocus() == focus) MarkDefaultButton(dialog, focus);
  });
}

bool DialogControl::TurnPage(int step) {
  if (!turnPage_) return false;
  window_.Queue()->Defer([dialog = window_.Handle(), step] {
    const FoundDialog found = FindDialog(dialog);
    if (found.control != nullptr) found.control->turnPage_(step);
  });
  return true;
}

// The dialog uses the key even if there is no other tab stop: the control with the focus must not
// take it as input.
bool DialogControl::MoveByTab(HWND focus, bool forward) {
  const auto next = NextTabStop(window_.Handle(), focus, forward);
  if (next != nullptr) FocusByKey(*next, forward);
  return true;
}

bool DialogControl::MoveInGroup(HWND focus, bool forward) {
  const auto next = NextInGroup(window_.Handle(), focus, forward);
  if (next == nullptr || next->Handle() == focus) return true;
  FocusByKey(*next, forward);
  if (IsAutomaticRadio(*next)) {
    window_.Queue()->Defer([control = next->Handle()] { ::SendMessageW(control, BM_CLICK, 0, 0); });
  }
  return true;
}

void DialogControl::FocusByKey(Window& control, bool forward) {
  if (window_.IsChild()) return GiveFocus(control.Handle());
  if (window_.Peer() == nullptr || control.Peer() == nullptr) return;
  static_cast<DialogPeer&>(*window_.Peer()).FocusByTab(*control.Peer(), forward);
}

}  // namespace platform

using namespace platform;

BOOL WINAPI IsDialogMessageW(HWND dialog, LPMSG message) try {
  if (message == nullptr) return FALSE;
  const bool isOfDialog = message->hwnd == dialog || ::IsChild(dialog, message->hwnd);
  const FoundDialog found = isOfDialog ? FindDialog(dialog) : FoundDialog();
  if (found.control == nullptr) return FALSE;
  if (found.control->TakeKeyMessage(*message)) return TRUE;
  ::TranslateMessage(message);
  ::DispatchMessageW(message);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
