// The setup wizard's last page, which stores the configuration. Owned by the wizard.
#pragma once

#include "wizard/exterior_page.h"

namespace quillgate {

class CompletionPage final : public ExteriorPage {
 public:
  CompletionPage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  void SetTexts(HWND window) override;
  DWORD Buttons() const override { return PSWIZB_BACK | PSWIZB_FINISH; }
  bool OnFinish() override;
};

}  // namespace quillgate
