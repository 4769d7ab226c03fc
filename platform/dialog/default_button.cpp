#include "platform/dialog/default_button.h"

#include "platform/dialog/dialog_order.h"

namespace platform {
namespace {

bool IsPushButton(LRESULT dialogCode) {
  return (dialogCode & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

// 0 when the dialog has none.
int DefaultIdOf(HWND dialog) {
  const LRESULT reply = ::SendMessageW(dialog, DM_GETDEFID, 0, 0);
  return HIWORD(reply) == DC_HASDEFID ? LOWORD(reply) : 0;
}

HWND DefaultButton(HWND dialog) {
  const int id = DefaultIdOf(dialog);
  return id != 0 ? ::GetDlgItem(dialog, id) : nullptr;
}

void SetStyle(HWND button, DWORD style) {
  ::SendMessageW(button, BM_SETSTYLE, style, TRUE);
}

void SendClick(HWND dialog, int id, HWND button) {
  if (button != nullptr && !::IsWindowEnabled(button)) return;
  const HWND receiver = button != nullptr ? ::GetParent(button) : dialog;
  ::SendMessageW(receiver, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(button));
}

}  // namespace

void MarkDefaultButton(HWND dialog, HWND focus) {
  const HWND wanted = IsPushButton(DialogCodeOf(focus)) ? focus : DefaultButton(dialog);
  for (const auto& control : ControlsOf(dialog)) {
    if (control->Handle() == wanted) continue;
    if ((DialogCodeOf(control->Handle()) & DLGC_DEFPUSHBUTTON) != 0)
      SetStyle(control->Handle(), BS_PUSHBUTTON);
  }
  if ((DialogCodeOf(wanted) & DLGC_UNDEFPUSHBUTTON) != 0) SetStyle(wanted, BS_DEFPUSHBUTTON);
}

void PressDefaultButton(HWND dialog, HWND focus) {
  // SetFocus alone does not make a push button the default one.
  const bool focusIsDefault = (DialogCodeOf(focus) & DLGC_DEFPUSHBUTTON) != 0;
  const HWND button = focusIsDefault ? focus : DefaultButton(dialog);
  if (button != nullptr) {
    SendClick(dialog, ::GetDlgCtrlID(button), button);
  } else {
    const int id = DefaultIdOf(dialog);
    SendClick(dialog, id != 0 ? id : IDOK, ::GetDlgItem(dialog, IDOK));
  }
}

void PressCancel(HWND dialog) {
  SendClick(dialog, IDCANCEL, ::GetDlgItem(dialog, IDCANCEL));
}

}  // namespace platform
