#include "platform/user/modal_loop.h"

#include "platform/user/desktop.h"
#include "platform/user/window_list.h"
#include "platform/user/window_relations.h"

namespace platform {
namespace {

// A dialog handles keys for the windows inside it, in any modal loop.
void Route(MSG& message) {
  const auto window = Resolve<Window>(HandleKind::kWindow, message.hwnd);
  const auto topLevel = window != nullptr ? TopLevelOf(window) : nullptr;
  if (topLevel != nullptr && ::IsDialogMessageW(topLevel->Handle(), &message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

}  // namespace

LoopEnd RunModalLoop(ThreadQueue& queue, const std::function<bool()>& isDone, QuitMessage quit) {
  const MessageFilter everything;
  const bool isOnDesktop = WindowThread() != nullptr;
  for (;;) {
    queue.ServeCalls();
    if (isDone()) return LoopEnd::kDone;
    if (isOnDesktop && WindowThread() == nullptr) return LoopEnd::kDesktopLost;
    if (queue.RunDeferred()) continue;
    auto message = queue.Take(everything, true);
    if (!message.has_value()) {
      queue.Wait(everything);
    } else if (message->message == WM_QUIT) {
      if (quit == QuitMessage::kPostAgain) queue.PostQuit(static_cast<int>(message->wParam));
      return LoopEnd::kQuit;
    } else {
      Route(*message);
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
    // The thread may have left the desktop before it ran this.
    ran = WindowThread() == windowThread;
    if (ran) work();
  });
  return ran;
}

bool RunOnWindowThread(const std::function<void()>& work) {
  const auto& caller = CurrentQueue();
  const bool joined = JoinDesktop(caller);
  const bool ran = CallWindowThread(work);
  // A thread without windows may never retrieve messages again, so it does not remain the window
  // thread.
  if (joined && Windows().OfThread(*caller).empty()) LeaveDesktop(*caller);
  return ran;
}

}  // namespace platform
