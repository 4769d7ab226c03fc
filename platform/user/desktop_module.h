// The one interface between the layer and its desktop module, a shared object that is loaded when
// the first window is created on a machine with a desktop. The object lives on that thread: it is
// made, used and destroyed there.
#pragma once

#include <memory>
#include <optional>

#include "platform/user/event_loop.h"
#include "platform/user/message_box.h"

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

  // Shows the box and returns at once. The type has been checked.
  virtual std::unique_ptr<ShownMessageBox> ShowMessageBox(const MessageBoxRequest& request) = 0;
};

// The module's single export, of the name kCreateDesktopModule. The caller owns the object.
using CreateDesktopModuleFunction = DesktopModule* (*)();
inline constexpr const char* kCreateDesktopModule = "CreateDesktopModule";

}  // namespace platform
