// The widget of a static control. Lives on the window thread.
#pragma once

#include <memory>

#include "platform/gdi/image.h"
#include "platform/user/window_peer.h"

namespace platform {

class StaticEvents {
 public:
  virtual ~StaticEvents() = default;

  // The key after the text's "&" was pressed. Called inside an event of the desktop.
  virtual void OnMnemonic() = 0;
};

class StaticPeer : public WindowPeer {
 public:
  // Shown instead of the text; null: nothing is shown.
  virtual void SetIcon(std::shared_ptr<const IconImages> icon) = 0;
  // What stands on the canvas of a bitmap now.
  virtual void SetPicture(const Canvas* picture) = 0;
};

}  // namespace platform
