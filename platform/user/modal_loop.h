// The message loop inside a modal call: a dialog, a sheet, a message box, a popup menu.
#pragma once

#include <functional>

#include "platform/user/thread_queue.h"

namespace platform {

enum class LoopEnd {
  kDone,
  kQuit,         // WM_QUIT was received first
  kDesktopLost,  // the connection to the desktop was lost
};

// Whether a WM_QUIT that ended the loop is posted again for the outer loop.
enum class QuitMessage { kPostAgain, kSwallow };

// Dispatches calls from other threads, deferred work, messages and timers of the calling thread
// until isDone returns true.
LoopEnd RunModalLoop(ThreadQueue& queue, const std::function<bool()>& isDone,
                     QuitMessage quit = QuitMessage::kPostAgain);

// Runs the work on the window thread: directly when the caller is that thread, else the caller
// waits for it. False when there is no window thread; the work has not run then.
bool CallWindowThread(const std::function<void()>& work);

// Like CallWindowThread, but if there is a desktop and no window thread yet, the caller becomes the
// window thread. It remains so only if it has windows afterwards.
bool RunOnWindowThread(const std::function<void()>& work);

}  // namespace platform
