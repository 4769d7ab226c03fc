// The setup wizard's page of the logon system. Owned by the wizard.
#pragma once

#include "wizard/setup_page.h"

namespace quillgate {

class SystemPage final : public SetupPage {
 public:
  SystemPage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool AcceptsNext() override;
};

}  // namespace quillgate
