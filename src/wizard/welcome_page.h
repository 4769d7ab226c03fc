// The setup wizard's page that greets. Owned by the wizard.
#pragma once

#include "wizard/exterior_page.h"

namespace quillgate {

class WelcomePage final : public ExteriorPage {
 public:
  WelcomePage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  void SetTexts(HWND window) override;
  DWORD Buttons() const override { return PSWIZB_NEXT; }
};

}  // namespace quillgate
