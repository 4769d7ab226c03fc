// Radio buttons of which one is checked, by their identifiers in any order. Borrowed from the
// dialog; cheap to make where it is needed.
#pragma once

#include <span>

#include "frame/check_box.h"

namespace quillgate {

class RadioGroup {
 public:
  // The identifiers outlive the object.
  RadioGroup(HWND dialog, std::span<const int> buttons) : dialog_(dialog), buttons_(buttons) {}

  void Select(int button) const {
    for (const int each : buttons_)
      CheckBox(dialog_, each).Check(each == button);
  }
  // The first checked one in the order of the identifiers; 0 when none is.
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
