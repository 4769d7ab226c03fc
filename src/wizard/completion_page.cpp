#include "wizard/completion_page.h"

#include "resources/resource.h"

namespace quillgate {

CompletionPage::CompletionPage(const WizardSurroundings& surroundings, WizardState& state)
    : ExteriorPage(surroundings, state, IDD_SETUP_COMPLETION, IDC_COMPLETION_TITLE) {}

void CompletionPage::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {{IDC_COMPLETION_TITLE, kMsgSetupCompletion},
                                    {IDC_COMPLETION_TEXT, kMsgSetupCompletionText},
                                    {IDC_COMPLETION_DISABLED, kMsgAccessDisabled},
                                    {IDC_COMPLETION_ENABLED, kMsgAccessEnabled},
                                    {IDC_COMPLETION_FINISH, kMsgClickFinish}};
  ShowTexts(kTexts);
}

bool CompletionPage::OnFinish() {
  const auto store = [this] { return State().Store(Surroundings().settings); };
  const bool isStored = Surroundings().configure(store);
  if (!isStored) ShowMessageBox(kMsgUnknownError, MB_ICONERROR);
  return isStored;
}

}  // namespace quillgate
