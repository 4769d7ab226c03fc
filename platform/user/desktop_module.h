// The interface between the layer and its desktop module, a shared object that is loaded when the
// first window is created on a machine with a desktop. The object is created, used and destroyed on
// the window thread. It also implements the interfaces that the families above this one declare:
// ControlSide, DialogSide, TraySide, HelpSide.
#pragma once

#include <string>

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

  // Keys and buttons that are down, as far as the desktop has reported to this process.
  virtual KeySet KeysDown() = 0;
  virtual void Beep() = 0;
  // Offers the text to other programs for pasting, in place of what was offered before. Empty:
  // nothing is offered.
  virtual void SetClipboardText(const std::wstring& text) = 0;
};

// The only export of the module, under the name kCreateDesktopModule. The caller owns the object.
using CreateDesktopModuleFunction = DesktopModule* (*)();
inline constexpr const char* kCreateDesktopModule = "CreateDesktopModule";

}  // namespace platform
