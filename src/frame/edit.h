// A field in which one line of text is entered.
#pragma once

#include "frame/control.h"

namespace quillgate {

class Edit : public Control {
 public:
  using Control::Control;

  // Characters that a person may enter at most.
  void LimitLength(int characters) const { Send(EM_LIMITTEXT, static_cast<WPARAM>(characters)); }
  void SelectAll() const { Send(EM_SETSEL, 0, -1); }
};

}  // namespace quillgate
