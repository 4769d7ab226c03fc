#include "settings/password_dialog.h"

#include "frame/edit.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kMaximumLength = 64;

}  // namespace

std::optional<std::wstring> PasswordDialog::Run(HWND owner) {
  if (RunModal(IDD_PASSWORD, owner) != IDOK) return {};
  return std::move(password_);
}

bool PasswordDialog::OnInitDialog(HWND window) {
  for (const int field : {IDC_PASSWORD, IDC_PASSWORD_AGAIN})
    Edit(window, field).LimitLength(kMaximumLength);
  return true;
}

void PasswordDialog::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_PASSWORD_LABEL, kMsgNewPassword},
                                    {IDC_PASSWORD_AGAIN_LABEL, kMsgConfirmPassword},
                                    {IDOK, kMsgOk},
                                    {IDCANCEL, kMsgCancel}};
  ShowCaption(kMsgChangePassword);
  ShowTexts(kTexts);
}

bool PasswordDialog::OnCommand(int control, int) {
  if (control != IDOK) return EndBy(control);
  password_ = Edit(Window(), IDC_PASSWORD).Text();
  if (password_ == Edit(Window(), IDC_PASSWORD_AGAIN).Text()) return EndBy(control);
  RefuseEntry(IDC_PASSWORD, kMsgPasswordsDiffer);
  return true;
}

}  // namespace quillgate
