// A check box, or one button of a radio group.
#pragma once

#include "frame/control.h"

namespace quillgate {

class CheckBox : public Control {
 public:
  using Control::Control;

  void Check(bool checked) const { Send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED); }
  bool IsChecked() const { return Send(BM_GETCHECK) == BST_CHECKED; }
};

}  // namespace quillgate
