// Base of the setup wizard's pages: leads where the path says, once the page has accepted what was
// entered, and asks before the wizard is cancelled. Owned by the wizard.
#pragma once

#include "frame/wizard_page.h"
#include "wizard/wizard_state.h"
#include "wizard/wizard_surroundings.h"

namespace quillgate {

class SetupPage : public WizardPage {
 protected:
  SetupPage(const WizardSurroundings& surroundings, WizardState& state, unsigned number,
            std::optional<Header> header);

  // Whether the page may be left; it has then kept what was entered.
  virtual bool AcceptsNext() { return true; }
  virtual bool AcceptsBack() { return true; }

  const WizardSurroundings& Surroundings() const { return surroundings_; }
  WizardState& State() const { return state_; }
  HWND Sheet() const { return ::GetParent(Window()); }

 private:
  std::optional<UINT> OnNext() final;
  std::optional<UINT> OnBack() final;
  bool OnQueryCancel() final;

  const WizardSurroundings& surroundings_;
  WizardState& state_;
  const unsigned number_;
};

}  // namespace quillgate
