// The setup wizard: the sheet of its eight pages. Modal; runs on the service main thread at the
// first start, or on the only thread of a process of its own.
#pragma once

#include "wizard/wizard_surroundings.h"

namespace quillgate {

class SetupWizard {
 public:
  explicit SetupWizard(WizardSurroundings surroundings) : surroundings_(std::move(surroundings)) {}

  // Returns when the wizard has been finished or cancelled. False when it could not be shown or the
  // program is to stop.
  bool Run();

 private:
  WizardSurroundings surroundings_;
};

}  // namespace quillgate
