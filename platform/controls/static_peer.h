// The widget of a static control. For the window thread.
#pragma once

#include <memory>

#include "platform/gdi/image.h"
#include "platform/user/window_peer.h"

namespace platform {

class StaticEvents {
 public:
  virtual ~StaticEvents() = default;

  // The mnemonic of the text was pressed. Called inside an event of the desktop.
  virtual void OnMnemonic() = 0;
};

class StaticPeer : public WindowPeer {
 public:
  // Shows the icon instead of the text; null: shows nothing.
  virtual void SetIcon(std::shared_ptr<const IconImages> icon) = 0;
  // Shows a copy of what the canvas contains now; null: shows nothing.
  virtual void SetPicture(const Canvas* canvas) = 0;
};

}  // namespace platform
