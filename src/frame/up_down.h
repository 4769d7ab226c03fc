// An up-down control. It notifies its dialog with UDN_DELTAPOS before each step.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "frame/control.h"

namespace quillgate {

class UpDown : public Control {
 public:
  using Control::Control;

  void SetRange(int lowest, int highest) const {
    Send(UDM_SETRANGE32, static_cast<WPARAM>(lowest), highest);
  }
  void SetPosition(int position) const { Send(UDM_SETPOS32, 0, position); }
  int Position() const { return static_cast<int>(Send(UDM_GETPOS32)); }
};

}  // namespace quillgate
