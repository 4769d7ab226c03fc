// Which keys and mouse buttons are down, from the events of all widgets of the process. The
// toolkit's own state misses events that did not come from the display server. Lives on the window
// thread.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/user/key_set.h"

namespace platform {

class QtKeyState {
 public:
  void Note(const QEvent& event);
  const KeySet& Down() const { return down_; }

 private:
  void NoteKey(const QKeyEvent& event);
  void NoteMouse(const QMouseEvent& event);
  void NoteModifiers(Qt::KeyboardModifiers modifiers);

  KeySet down_;
};

}  // namespace platform
