// The setup wizard's page of the restrictions that hold for everybody under NONE. Owned by the
// wizard.
#pragma once

#include "settings/limit_controls.h"
#include "wizard/setup_page.h"

namespace quillgate {

class RestrictionsPage final : public SetupPage {
 public:
  RestrictionsPage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;
  bool AcceptsNext() override { return Keep(); }
  bool AcceptsBack() override { return Keep(); }

  // Keeps the limit. False when it is out of range, which the user is told.
  bool Keep();
  void ChangeHours();
  LimitControls Limit() const;
};

}  // namespace quillgate
