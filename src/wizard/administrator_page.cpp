#include "wizard/administrator_page.h"

#include "frame/edit.h"
#include "resources/resource.h"
#include "settings/user_name.h"

namespace quillgate {

AdministratorPage::AdministratorPage(const WizardSurroundings& surroundings, WizardState& state)
    : PasswordPage(surroundings, state, IDD_SETUP_ADMINISTRATOR,
                   {kMsgAdministratorTitle, kMsgAdministratorSubtitle},
                   {IDC_ADMINISTRATOR_PASSWORD, IDC_ADMINISTRATOR_CONFIRM}) {}

bool AdministratorPage::OnInitDialog(HWND window) {
  Edit(window, IDC_ADMINISTRATOR_NAME).SetText(State().AdministratorName());
  return PasswordPage::OnInitDialog(window);
}

void AdministratorPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_ADMINISTRATOR_EXPLANATION, kMsgAdministratorExplanation},
                                    {IDC_ADMINISTRATOR_NAME_LABEL, kMsgAdministratorName},
                                    {IDC_ADMINISTRATOR_PASSWORD_LABEL, kMsgSetupPassword},
                                    {IDC_ADMINISTRATOR_CONFIRM_LABEL, kMsgSetupConfirmPassword},
                                    {IDC_ADMINISTRATOR_WARNING, kMsgAdministratorWarning}};
  ShowTexts(kTexts);
}

bool AdministratorPage::AcceptsNext() {
  const std::wstring name = Edit(Window(), IDC_ADMINISTRATOR_NAME).Text();
  if (!IsAcceptableUserName(name)) {
    RefuseEntry(IDC_ADMINISTRATOR_NAME, kMsgInvalidUserName);
    return false;
  }
  const auto password = ReadPassword();
  if (password) State().SetAdministrator(name, *password);
  return password.has_value();
}

}  // namespace quillgate
