#include "wizard/setup_page.h"

#include "frame/help_topics.h"

namespace quillgate {

SetupPage::SetupPage(const WizardSurroundings& surroundings, WizardState& state, unsigned number,
                     std::optional<Header> header)
    : WizardPage(surroundings.ui, number, kMsgSetupWizard, header, kTopicSetupWizard),
      surroundings_(surroundings),
      state_(state),
      number_(number) {}

std::optional<UINT> SetupPage::OnNext() {
  if (!AcceptsNext()) return {};
  return NextPage(number_, state_.Choices());
}

std::optional<UINT> SetupPage::OnBack() {
  if (!AcceptsBack()) return {};
  return PreviousPage(number_, state_.Choices());
}

bool SetupPage::OnQueryCancel() {
  return Ask(kMsgAskExitWizard, kMsgSetupWizard);
}

}  // namespace quillgate
