// Posting, sending, retrieving and dispatching messages.
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/atom_table.h"
#include "platform/user/keyboard.h"
#include "platform/user/thread_queue.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

BOOL ReportPost(PostResult result, DWORD errorWhenEnded) {
  if (result == PostResult::kPosted) return TRUE;
  ::SetLastError(result == PostResult::kFull ? ERROR_NOT_ENOUGH_QUOTA : errorWhenEnded);
  return FALSE;
}

// False, with the last error set, when the calling thread cannot retrieve messages of the window,
// or has no buffer for one.
bool CheckRetrieval(const MSG* message, HWND window) {
  if (message == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return false;
  }
  return window == kNoWindow || BelongsToCaller(window);
}

bool IsKey(UINT message) {
  return message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN ||
         message == WM_SYSKEYUP;
}

void PostCharacters(const MSG& key) {
  const UINT message = key.message == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR;
  for (const wchar_t each : CharactersOf(static_cast<UINT>(key.wParam)))
    CurrentQueue()->Post({key.hwnd, message, static_cast<WPARAM>(each), key.lParam, 0, {}});
}

// Runs calls and deferred work, which no message and no filter holds back.
void ServeSenders(ThreadQueue& queue) {
  queue.ServeCalls();
  while (queue.RunDeferred())
    queue.ServeCalls();
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL WINAPI GetMessageW(LPMSG message, HWND window, UINT first, UINT last) try {
  if (!CheckRetrieval(message, window)) return -1;
  const MessageFilter filter{window, first, last};
  ThreadQueue& queue = *CurrentQueue();
  for (;;) {
    queue.ServeCalls();
    if (queue.RunDeferred()) continue;
    if (const auto taken = queue.Take(filter, true)) {
      *message = *taken;
      return taken->message != WM_QUIT ? TRUE : FALSE;
    }
    queue.Wait(filter);
  }
} catch (...) {
  return FailedCall(-1);
}

BOOL WINAPI PeekMessageW(LPMSG message, HWND window, UINT first, UINT last, UINT remove) try {
  if (!CheckRetrieval(message, window)) return FALSE;
  if (remove != PM_REMOVE && remove != PM_NOREMOVE) {
    LogLine("PeekMessageW: only PM_NOREMOVE and PM_REMOVE are supported");
    ::SetLastError(ERROR_INVALID_FLAGS);
    return FALSE;
  }
  const MessageFilter filter{window, first, last};
  ThreadQueue& queue = *CurrentQueue();
  ServeSenders(queue);
  auto taken = queue.Take(filter, remove == PM_REMOVE);
  if (!taken.has_value()) {
    queue.PollEventLoop();
    ServeSenders(queue);
    taken = queue.Take(filter, remove == PM_REMOVE);
  }
  if (!taken.has_value()) return FALSE;
  *message = *taken;
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI TranslateMessage(const MSG* message) try {
  if (message == nullptr || !IsKey(message->message)) return FALSE;
  const bool isDown = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
  if (isDown) PostCharacters(*message);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

LRESULT WINAPI DispatchMessageW(const MSG* message) try {
  if (message->message == WM_TIMER && message->lParam != 0) {
    const auto callback = reinterpret_cast<TIMERPROC>(message->lParam);
    callback(message->hwnd, WM_TIMER, message->wParam, ::GetTickCount());
    return 0;
  }
  if (message->hwnd == nullptr) return 0;
  const auto window = FindWindowOf(message->hwnd);
  if (window == nullptr) return 0;
  if (!window->BelongsToCaller()) {
    ::SetLastError(ERROR_WINDOW_OF_OTHER_THREAD);
    return 0;
  }
  return window->CallProcedure(message->message, message->wParam, message->lParam);
} catch (...) {
  return FailedCall(LRESULT{0});
}

LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) try {
  if (window == HWND_BROADCAST) {
    for (const auto& each : Windows().TopLevel())
      ::SendMessageW(each->Handle(), message, wParam, lParam);
    return TRUE;
  }
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  LRESULT result = 0;
  RunOnOwner(found, [&] { result = found->CallProcedure(message, wParam, lParam); });
  return result;
} catch (...) {
  return FailedCall(LRESULT{0});
}

BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) try {
  if (window == nullptr) {
    return ::PostThreadMessageW(::GetCurrentThreadId(), message, wParam, lParam);
  }
  if (window == HWND_BROADCAST) {
    for (const auto& each : Windows().TopLevel())
      ::PostMessageW(each->Handle(), message, wParam, lParam);
    return TRUE;
  }
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  return ReportPost(found->Queue()->Post({window, message, wParam, lParam, 0, {}}),
                    ERROR_INVALID_WINDOW_HANDLE);
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI PostThreadMessageW(DWORD threadId, UINT message, WPARAM wParam, LPARAM lParam) try {
  // The calling thread gets a queue, as with every call of the window API.
  const bool isOwn = threadId == ::GetCurrentThreadId();
  const auto queue = isOwn ? CurrentQueue() : QueueOfThread(threadId);
  if (queue == nullptr) {
    ::SetLastError(ERROR_INVALID_THREAD_ID);
    return FALSE;
  }
  return ReportPost(queue->Post({nullptr, message, wParam, lParam, 0, {}}),
                    ERROR_INVALID_THREAD_ID);
} catch (...) {
  return FailedCall(FALSE);
}

void WINAPI PostQuitMessage(int exitCode) try { CurrentQueue()->PostQuit(exitCode); } catch (...) {
  ErrorOfException();
}

UINT WINAPI RegisterWindowMessageW(LPCWSTR name) try {
  if (name == nullptr || name[0] == L'\0') {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  const ATOM atom = Atoms().Add(name);
  if (atom == 0) ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  return atom;
} catch (...) {
  return FailedCall(UINT{0});
}
