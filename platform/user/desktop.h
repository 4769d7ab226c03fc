// The machine's desktop: whether there is one, and the desktop module. There is a desktop when the
// environment names one (DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM) or a session offers one, the
// module can be loaded and the module can connect to it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/user/desktop_module.h"
#include "platform/user/thread_queue.h"

namespace platform {

// Makes the queue's thread the window thread, if there is a desktop and no window thread yet: loads
// the module and lets the queue wait in its event loop. True when this call made the thread the
// window thread. Called by the queue's thread.
bool JoinDesktop(const std::shared_ptr<ThreadQueue>& queue);

// Variables of the environment that name a display to the toolkit; empty values unset them.
using DisplayVariables = std::map<std::string, std::string>;

// Lets the first thread that found no desktop join this one, when it next retrieves messages: its
// windows get peers, and top-level windows are notified by WM_DISPLAYCHANGE. `follow` is called
// there afterwards, not at all when the thread has ended before, and once more when the desktop is
// lost: it must call none of these functions. False: no thread waits for a desktop. Any thread.
bool JoinDesktopLater(DisplayVariables variables, std::function<void(bool isJoined)> follow);

enum class DesktopUse {
  kNone,
  kJoined,
  kSpent,  // the connection was lost, or broke while it was made: no other is made in this process
};
DesktopUse CurrentDesktopUse();

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
