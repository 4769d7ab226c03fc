// The one interface between the layer and its desktop module, a shared object that is loaded when
// the first window is created on a machine with a desktop. The object lives on that thread: it is
// made, used and destroyed there.
#pragma once

#include <memory>
#include <optional>

#include "platform/controls/control_peers.h"
#include "platform/dialog/dialog_peers.h"
#include "platform/gdi/graphics_backend.h"
#include "platform/shell/tray_backend.h"
#include "platform/user/event_loop.h"
#include "platform/user/key_set.h"
#include "platform/user/menu_backend.h"
#include "platform/user/message_box.h"
#include "platform/user/window_peer.h"

namespace platform {

// A message box on the screen; closed by its destructor.
class ShownMessageBox {
 public:
  virtual ~ShownMessageBox() = default;

  // The button's identifier as soon as one has been chosen. The event loop is woken then.
  virtual std::optional<int> Answer() const = 0;
};

class DesktopModule {
 public:
  virtual ~DesktopModule() = default;
  virtual EventLoop& Loop() = 0;
  virtual WindowPeers& Windows() = 0;
  virtual ControlPeers& Controls() = 0;
  virtual DialogPeers& Dialogs() = 0;
  virtual GraphicsBackend& Graphics() = 0;
  virtual MenuBackend& Menus() = 0;
  virtual TrayBackend& Tray() = 0;

  // What is down at the moment, as far as the process has been told.
  virtual KeySet KeysDown() = 0;
  virtual void Beep() = 0;

  // Shows the box, which gets the keyboard, and returns at once.
  virtual std::unique_ptr<ShownMessageBox> ShowMessageBox(const MessageBoxView& view) = 0;
};

// The module's single export, of the name kCreateDesktopModule. The caller owns the object.
using CreateDesktopModuleFunction = DesktopModule* (*)();
inline constexpr const char* kCreateDesktopModule = "CreateDesktopModule";

}  // namespace platform
