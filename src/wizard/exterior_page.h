// Base of the setup wizard's first and last page: beside the watermark, with a title in large
// letters.
#pragma once

#include "handles/gdi_handles.h"
#include "wizard/setup_page.h"

namespace quillgate {

class ExteriorPage : public SetupPage {
 protected:
  // `title` is the control that shows the title.
  ExteriorPage(const WizardSurroundings& surroundings, WizardState& state, unsigned number,
               int title);

 private:
  bool OnInitDialog(HWND window) final;

  const int title_;
  FontHandle font_;
};

}  // namespace quillgate
