#include "platform/dialog/scripted_dialog.h"

#include <gtest/gtest.h>

namespace {

class Offscreen : public ::testing::Environment {
 public:
  void SetUp() override { ::setenv("QT_QPA_PLATFORM", "offscreen", 0); }
};
[[maybe_unused]] const auto* const offscreen = ::testing::AddGlobalTestEnvironment(new Offscreen);

ScriptedDialog* current = nullptr;

}  // namespace

void KeepDesktop() {
  static const HWND window = ::CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 0, 0, nullptr,
                                               nullptr, nullptr, nullptr);
  static_cast<void>(window);
}

ScriptedDialog::ScriptedDialog() {
  KeepDesktop();
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
    const LRESULT code = ::SendDlgItemMessageW(dialog, id, WM_GETDLGCODE, 0, 0);
    if ((code & kPush) != 0 && HIWORD(wParam) == BN_CLICKED) ::EndDialog(dialog, id);
    return TRUE;
  });
}

INT_PTR ScriptedDialog::Run(LPCWSTR name, HWND owner) {
  return ::DialogBoxParamW(nullptr, name, owner, Procedure, 0);
}

HWND ScriptedDialog::Create(LPCWSTR name, HWND owner, LPARAM parameter) {
  window_ = ::CreateDialogParamW(nullptr, name, owner, Procedure, parameter);
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
