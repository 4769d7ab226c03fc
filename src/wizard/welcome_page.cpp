#include "wizard/welcome_page.h"

#include "resources/resource.h"

namespace quillgate {

WelcomePage::WelcomePage(const WizardSurroundings& surroundings, WizardState& state)
    : ExteriorPage(surroundings, state, IDD_SETUP_WELCOME, IDC_WELCOME_TITLE) {}

void WelcomePage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_WELCOME_TITLE, kMsgSetupWelcome},
                                    {IDC_WELCOME_TEXT, kMsgSetupWelcomeText},
                                    {IDC_WELCOME_NEXT, kMsgPressNext}};
  ShowTexts(kTexts);
}

}  // namespace quillgate
