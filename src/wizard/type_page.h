// The setup wizard's page of the configuration type. Owned by the wizard.
#pragma once

#include "wizard/setup_page.h"

namespace quillgate {

class TypePage final : public SetupPage {
 public:
  TypePage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool AcceptsNext() override;
};

}  // namespace quillgate
