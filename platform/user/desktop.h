// The machine's desktop: whether there is one, and the module that knows it. A machine has a
// desktop when the environment names one (DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM) and the
// module can be loaded and reaches it.
#pragma once

#include <memory>

#include "platform/user/desktop_module.h"
#include "platform/user/thread_queue.h"

namespace platform {

// Makes the thread of this queue the window thread, if there is a desktop and no window thread yet:
// loads the module and lets the queue wait in its loop. True when it has become that just now.
// Called by the queue's thread.
bool JoinDesktop(const std::shared_ptr<ThreadQueue>& queue);

// Ends the module when the queue's thread is the window thread; another thread can join then.
// Called by the queue's thread.
void LeaveDesktop(const ThreadQueue& queue);

// The desktop of this queue's thread has gone while the thread used it: from now on the machine has
// none, and the thread's windows are hidden ones. Called by the queue's thread.
void LoseDesktop(const ThreadQueue& queue);

// The queue of the window thread; null as long as there is none.
std::shared_ptr<ThreadQueue> WindowThread();

// Whether the caller is the window thread.
bool IsWindowThread();

// The module, for the window thread alone.
DesktopModule& Desktop();

// What the module is to a family above this one.
template <class Side>
Side& DesktopSide() {
  return dynamic_cast<Side&>(Desktop());
}

}  // namespace platform
