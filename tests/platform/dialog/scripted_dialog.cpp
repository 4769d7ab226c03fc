#include "platform/dialog/scripted_dialog.h"

#include "platform/dialog/template_bytes.h"

namespace {

ScriptedDialog* current = nullptr;

}  // namespace

LPCWSTR Form() {
  static const LPCWSTR name = AddTemplate(
      TemplateBytes(kDialogStyle, {0, 0, 200, 120}, u"Form")
          .Item(u"Static", 1000, kItem, {5, 5, 60, 10}, u"&Name:")
          .Item(u"Edit", kName, kStop, {70, 5, 100, 14}, u"text", kNameHelp)
          .Item(kButton, kFirstKind, kStop | WS_GROUP | BS_AUTORADIOBUTTON, {5, 25, 60, 12}, u"One")
          .Item(kButton, kSecondKind, kItem | BS_AUTORADIOBUTTON, {5, 38, 60, 12}, u"Two")
          .Item(kButton, kThirdKind, kItem | BS_AUTORADIOBUTTON, {5, 51, 60, 12}, u"Three")
          .Item(kButton, kCheck, kStop | WS_GROUP | BS_AUTOCHECKBOX, {5, 70, 80, 12}, u"&Check")
          .Item(kButton, IDOK, kStop | BS_DEFPUSHBUTTON, {5, 95, 50, 14}, u"OK")
          .Item(kButton, IDCANCEL, kStop, {60, 95, 50, 14}, u"Cancel")
          .Item(kButton, kOther, kStop, {115, 95, 50, 14}, u"&Other"));
  return name;
}

ScriptedDialog::ScriptedDialog() {
  current = this;
}

ScriptedDialog::~ScriptedDialog() {
  if (::IsWindow(window_)) ::DestroyWindow(window_);
  current = nullptr;
}

void ScriptedDialog::EndOnCommands() {
  On(WM_COMMAND, [](HWND dialog, WPARAM wParam, LPARAM) -> INT_PTR {
    constexpr LRESULT kPush = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
    const int id = LOWORD(wParam);
    const LRESULT code = ::SendMessageW(::GetDlgItem(dialog, id), WM_GETDLGCODE, 0, 0);
    if ((code & kPush) != 0 && HIWORD(wParam) == BN_CLICKED) ::EndDialog(dialog, id);
    return TRUE;
  });
}

INT_PTR ScriptedDialog::Run(LPCWSTR name, HWND owner) const {
  return ::DialogBoxParamW(nullptr, name, owner, Procedure, 0);
}

HWND ScriptedDialog::Create(LPCWSTR name, LPARAM parameter) {
  window_ = ::CreateDialogParamW(nullptr, name, nullptr, Procedure, parameter);
  return window_;
}

INT_PTR CALLBACK ScriptedDialog::Procedure(HWND dialog, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
  if (current == nullptr) return FALSE;
  current->window_ = dialog;
  current->messages_.push_back(message);
  const auto answer = current->answers_.find(message);
  return answer != current->answers_.end() ? answer->second(dialog, wParam, lParam) : FALSE;
}

void DispatchAll() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    ::DispatchMessageW(&message);
}
