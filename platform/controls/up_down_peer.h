// The widget of an up-down control: two arrows. For the window thread.
#pragma once

#include "platform/user/window_peer.h"

namespace platform {

class UpDownEvents {
 public:
  virtual ~UpDownEvents() = default;

  // An arrow, or its key in the buddy, was pressed; repeats while it is held. Called inside an
  // event of the desktop.
  virtual void OnStep(bool up) = 0;
};

class UpDownPeer : public WindowPeer {
 public:
  // Arrow keys pressed in the buddy step, too; null: no buddy.
  virtual void TakeArrowKeysOf(WindowPeer* buddy) = 0;
};

}  // namespace platform
