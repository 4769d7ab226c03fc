// The setup wizard's page of the administrator of the QUILLGATE system. Owned by the wizard.
#pragma once

#include "wizard/password_page.h"

namespace quillgate {

class AdministratorPage final : public PasswordPage {
 public:
  AdministratorPage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool AcceptsNext() override;
};

}  // namespace quillgate
