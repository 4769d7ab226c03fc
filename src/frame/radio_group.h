// A group of radio buttons, one of which is checked, given by their identifiers in any order. Does
// not own the windows; cheap to construct where it is needed.
#pragma once

#include <span>

#include "frame/check_box.h"

namespace quillgate {

class RadioGroup {
 public:
  // The identifiers must outlive the object.
  RadioGroup(HWND dialog, std::span<const int> buttons) : dialog_(dialog), buttons_(buttons) {}

  void Select(int button) const {
    for (const int each : buttons_)
      CheckBox(dialog_, each).Check(each == button);
  }
  // The first checked button in the order of the identifiers; 0 when none is checked.
  int Selection() const {
    for (const int each : buttons_)
      if (CheckBox(dialog_, each).IsChecked()) return each;
    return 0;
  }

 private:
  HWND dialog_;
  std::span<const int> buttons_;
};

}  // namespace quillgate
