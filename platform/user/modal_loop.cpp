#include "platform/user/modal_loop.h"

#include "platform/user/desktop.h"
#include "platform/user/window_list.h"

namespace platform {

bool RunModalLoop(ThreadQueue& queue, const std::function<bool()>& isDone) {
  const MessageFilter everything;
  const bool isOnDesktop = WindowThread() != nullptr;
  for (;;) {
    queue.ServeCalls();
    if (isDone()) return true;
    if (isOnDesktop && WindowThread() == nullptr) return false;
    if (queue.RunDeferred()) continue;
    const auto message = queue.Take(everything, true);
    if (!message.has_value()) {
      queue.Wait(everything);
    } else if (message->message == WM_QUIT) {
      queue.PostQuit(static_cast<int>(message->wParam));
      return false;
    } else {
      ::TranslateMessage(&*message);
      ::DispatchMessageW(&*message);
    }
  }
}

bool CallWindowThread(const std::function<void()>& work) {
  const auto windowThread = WindowThread();
  if (windowThread == nullptr) return false;
  if (windowThread == CurrentQueue()) {
    work();
    return true;
  }
  bool ran = false;
  windowThread->Call([&] {
    // It may have left the desktop before it came to this.
    ran = WindowThread() == windowThread;
    if (ran) work();
  });
  return ran;
}

bool RunOnWindowThread(const std::function<void()>& work) {
  const auto& caller = CurrentQueue();
  const bool joined = JoinDesktop(caller);
  const bool ran = CallWindowThread(work);
  // A thread without windows, which may never look at messages again, does not stay it.
  if (joined && Windows().OfThread(*caller).empty()) LeaveDesktop(*caller);
  return ran;
}

}  // namespace platform
