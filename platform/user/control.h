// The behaviour of a window of a system class ("Button", "#32770", ...), in the place of a
// registered class's window procedure. Owned by its window, on the window's thread.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <vector>

#include "platform/user/window_peer.h"

namespace platform {

class Window;

class Control {
 public:
  virtual ~Control() = default;

  // Creates the peer that the window then owns. Called once, before WM_NCCREATE, if the window has
  // a desktop.
  virtual std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) = 0;

  // The result of a message; nothing when DefWindowProcW is to handle it.
  virtual std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;

  // Whether the window gets key messages for what its peer reports. Other controls handle keys
  // inside the desktop's event.
  virtual bool TakesKeyMessages() const { return false; }

  // The value that the class keeps with each window at that offset (GetWindowLongPtrW with an index
  // of zero or more); null when there is none.
  virtual LONG_PTR* Extra(int /*index*/) { return nullptr; }
};

struct SystemClass {
  const wchar_t* name;
  std::unique_ptr<Control> (*make)(Window& window);
};

// Every system class; FindWindowClass finds them for any instance, without regard to case. Defined
// by the wiring.
std::vector<SystemClass> SystemClasses();

}  // namespace platform
