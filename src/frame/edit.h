// An edit control for one line of text.
#pragma once

#include "frame/control.h"

namespace quillgate {

class Edit : public Control {
 public:
  using Control::Control;

  // Limits how many characters the user can enter.
  void LimitLength(int characters) const { Send(EM_LIMITTEXT, static_cast<WPARAM>(characters)); }
  void SelectAll() const { Send(EM_SETSEL, 0, -1); }
};

}  // namespace quillgate
