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
  if (password != Edit(Window(), fields_.confirmation).Text()) {
    RefuseEntry(fields_.confirmation, kMsgPasswordsDiffer);
    return {};
  }
  if (password.empty() && !Ask(kMsgAskNoPassword)) return {};
  return password;
}

}  // namespace quillgate
