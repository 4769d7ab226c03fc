// The setup wizard's page of the override password. Owned by the wizard.
#pragma once

#include "wizard/password_page.h"

namespace quillgate {

class OverridePage final : public PasswordPage {
 public:
  OverridePage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  void SetTexts(HWND window) override;
  bool AcceptsNext() override;
};

}  // namespace quillgate
