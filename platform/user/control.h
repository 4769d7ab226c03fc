// The behaviour of a window of one of the system's own classes ("Button", "#32770", ...): what a
// registered class does in its window procedure. Owned by its window, on that window's thread.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <span>

#include "platform/user/window_peer.h"

namespace platform {

class Window;

class Control {
 public:
  virtual ~Control() = default;

  // Called once, before WM_NCCREATE, if the window has a desktop: the peer that the window keeps.
  virtual std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) = 0;

  // The answer to a message; nothing: DefWindowProcW answers.
  virtual std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;

  // The value that the class keeps with each window at that offset (GetWindowLongPtrW with an index
  // from zero on); null when there is none.
  virtual LONG_PTR* Extra(int /*index*/) { return nullptr; }
};

struct SystemClass {
  const wchar_t* name;
  std::unique_ptr<Control> (*make)(Window& window);
};

// Every class of the system; found for any instance, without regard to case. Defined by the family
// that has most of them (controls/system_classes.cpp).
std::span<const SystemClass> SystemClasses();

}  // namespace platform
