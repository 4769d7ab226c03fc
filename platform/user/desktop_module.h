// The one interface between the layer and its desktop module, a shared object that is loaded when
// the first window is created on a machine with a desktop. The object lives on that thread: it is
// made, used and destroyed there. It also implements the side of each family above this one, which
// that family declares: ControlSide, DialogSide, TraySide.
#pragma once

#include "platform/gdi/graphics_backend.h"
#include "platform/user/event_loop.h"
#include "platform/user/key_set.h"
#include "platform/user/menu_backend.h"
#include "platform/user/window_peer.h"

namespace platform {

class DesktopModule {
 public:
  virtual ~DesktopModule() = default;
  virtual EventLoop& Loop() = 0;
  virtual WindowPeers& Windows() = 0;
  virtual GraphicsBackend& Graphics() = 0;
  virtual MenuBackend& Menus() = 0;

  // What is down at the moment, as far as the process has been told.
  virtual KeySet KeysDown() = 0;
  virtual void Beep() = 0;
};

// The module's single export, of the name kCreateDesktopModule. The caller owns the object.
using CreateDesktopModuleFunction = DesktopModule* (*)();
inline constexpr const char* kCreateDesktopModule = "CreateDesktopModule";

}  // namespace platform
