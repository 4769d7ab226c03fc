// The widget of a push button, check box, radio button or group box. A click does not change the
// widget itself: the control decides what the click does. For the window thread.
#pragma once

#include "platform/user/window_peer.h"

namespace platform {

// Called inside an event of the desktop.
class ButtonEvents {
 public:
  virtual ~ButtonEvents() = default;

  virtual void OnClicked() = 0;
  // The mnemonic of a group box was pressed.
  virtual void OnMnemonic() = 0;
};

class ButtonPeer : public WindowPeer {
 public:
  // For check boxes and radio buttons.
  virtual void SetChecked(bool checked) = 0;
  // Sets whether a push button has the default button's look.
  virtual void SetDefault(bool isDefault) = 0;
};

}  // namespace platform
