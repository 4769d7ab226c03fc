#include "wizard/password_page.h"

#include "frame/edit.h"

namespace quillgate {
namespace {

constexpr int kMaximumLength = 32;

}  // namespace

PasswordPage::PasswordPage(const WizardSurroundings& surroundings, WizardState& state,
                           unsigned number, Header header, Fields fields)
    : SetupPage(surroundings, state, number, header), fields_(fields) {}

bool PasswordPage::OnInitDialog(HWND window) {
  for (const int field : {fields_.password, fields_.confirmation})
    Edit(window, field).LimitLength(kMaximumLength);
  return true;
}

std::optional<std::wstring> PasswordPage::ReadPassword() const {
  std::wstring password = Edit(Window(), fields_.password).Text();
  const Edit confirmation(Window(), fields_.confirmation);
  if (password != confirmation.Text()) {
    ShowMessageBox(kMsgPasswordsDiffer, MB_ICONEXCLAMATION);
    confirmation.SelectAll();
    confirmation.Focus();
    return {};
  }
  if (password.empty() && !Ask(kMsgAskNoPassword)) return {};
  return password;
}

}  // namespace quillgate
