// The message loop inside a modal call: a dialog, a sheet, a message box, a popup menu.
#pragma once

#include <functional>

#include "platform/user/thread_queue.h"

namespace platform {

enum class LoopEnd {
  kDone,
  kQuit,         // WM_QUIT came first
  kDesktopLost,  // the desktop went, and with it whoever could have answered
};

// Whether the loop outside sees the WM_QUIT that ended this one.
enum class QuitMessage { kPostAgain, kSwallow };

// Serves calls, what the user did, messages and timers of the calling thread until isDone says so.
LoopEnd RunModalLoop(ThreadQueue& queue, const std::function<bool()>& isDone,
                     QuitMessage quit = QuitMessage::kPostAgain);

// Runs the work on the window thread: at once when the caller is that thread, else while the caller
// waits. False when there is none; nothing has run then.
bool CallWindowThread(const std::function<void()>& work);

// The same, but where there is a desktop and no window thread yet, the caller becomes it; it stays
// it only if it has windows afterwards.
bool RunOnWindowThread(const std::function<void()>& work);

}  // namespace platform
