#include "wizard/override_page.h"

#include "resources/resource.h"

namespace quillgate {

OverridePage::OverridePage(const WizardSurroundings& surroundings, WizardState& state)
    : PasswordPage(surroundings, state, IDD_SETUP_OVERRIDE,
                   {kMsgOverrideTitle, kMsgOverrideSubtitle},
                   {IDC_OVERRIDE_PASSWORD, IDC_OVERRIDE_CONFIRM}) {}

void OverridePage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_OVERRIDE_EXPLANATION, kMsgOverrideExplanation},
                                    {IDC_OVERRIDE_PASSWORD_LABEL, kMsgOverridePassword},
                                    {IDC_OVERRIDE_CONFIRM_LABEL, kMsgOverrideConfirmPassword},
                                    {IDC_OVERRIDE_WARNING, kMsgOverrideWarning}};
  ShowTexts(kTexts);
}

bool OverridePage::AcceptsNext() {
  const auto password = ReadPassword();
  if (password) State().SetOverridePassword(*password);
  return password.has_value();
}

}  // namespace quillgate
