// The widget of a push button, check box, radio button or group box. It never changes by itself:
// the control decides what a click does. Lives on the window thread.
#pragma once

#include "platform/user/window_peer.h"

namespace platform {

// Called inside an event of the desktop.
class ButtonEvents {
 public:
  virtual ~ButtonEvents() = default;

  virtual void OnClicked() = 0;
  // The key after the "&" of a group box's title was pressed.
  virtual void OnMnemonic() = 0;
};

class ButtonPeer : public WindowPeer {
 public:
  // Of check boxes and radio buttons.
  virtual void SetChecked(bool checked) = 0;
  // Whether a push button looks like the one that Enter presses.
  virtual void SetDefault(bool isDefault) = 0;
};

}  // namespace platform
