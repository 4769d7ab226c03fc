// The machine's desktop: whether there is one, and the desktop module. There is a desktop when the
// environment names one (DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM), the module can be loaded and
// the module can connect to it.
#pragma once

#include <memory>

#include "platform/user/desktop_module.h"
#include "platform/user/thread_queue.h"

namespace platform {

// Makes the queue's thread the window thread, if there is a desktop and no window thread yet: loads
// the module and lets the queue wait in its event loop. True when this call made the thread the
// window thread. Called by the queue's thread.
bool JoinDesktop(const std::shared_ptr<ThreadQueue>& queue);

// Destroys the module if the queue's thread is the window thread; another thread can join then.
// Called by the queue's thread.
void LeaveDesktop(const ThreadQueue& queue);

// Handles the loss of the desktop's connection while the queue's thread was the window thread. From
// then on the machine has no desktop, and the thread's windows have no peers. Called by the queue's
// thread.
void LoseDesktop(const ThreadQueue& queue);

// The queue of the window thread; null when there is none.
std::shared_ptr<ThreadQueue> WindowThread();

// Whether the caller is the window thread.
bool IsWindowThread();

// The module. For the window thread only.
DesktopModule& Desktop();

// The interface that a family above this one has declared for the module to implement.
template <class Side>
Side& DesktopSide() {
  return dynamic_cast<Side&>(Desktop());
}

}  // namespace platform
