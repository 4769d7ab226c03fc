#include "platform/user/message_box.h"

#include <windows.h>

#include <mutex>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/window_list.h"

namespace platform {
namespace {

constexpr UINT kButtonsMask = 0x0F;  // MB_TYPEMASK
constexpr UINT kIconMask = 0xF0;     // MB_ICONMASK

struct ResponderSlot {
  std::mutex mutex;
  MessageBoxResponder responder;
};

ResponderSlot& Slot() {
  static ResponderSlot& slot = *new ResponderSlot;
  return slot;
}

MessageBoxResponder CurrentResponder() {
  ResponderSlot& slot = Slot();
  const std::lock_guard lock(slot.mutex);
  return slot.responder;
}

bool IsSupported(UINT type) {
  const UINT buttons = type & kButtonsMask;
  const bool known = buttons == MB_OK || buttons == MB_OKCANCEL || buttons == MB_YESNO;
  return known && (type & kIconMask) <= MB_ICONINFORMATION &&
         (type & ~(kButtonsMask | kIconMask)) == 0;
}

// The box's own message loop on the window thread. Quitting ends the box without an answer.
int RunBox(ThreadQueue& queue, const MessageBoxRequest& request) {
  const auto box = Desktop().ShowMessageBox(request);
  const MessageFilter everything;
  for (;;) {
    queue.ServeCalls();
    if (const auto answer = box->Answer()) return *answer;
    const auto message = queue.Take(everything, true);
    if (!message.has_value()) {
      queue.Wait(everything);
    } else if (message->message == WM_QUIT) {
      queue.PostQuit(static_cast<int>(message->wParam));
      return 0;
    } else {
      ::DispatchMessageW(&*message);
    }
  }
}

int FailWithoutDesktop(const MessageBoxRequest& request) {
  LogLine("message box: " + Utf8(request.caption) + ": " + Utf8(request.text));
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return 0;
}

int AskOnDesktop(const MessageBoxRequest& request) {
  const auto& caller = CurrentQueue();
  const bool joined = JoinDesktop(caller);
  const auto windowThread = WindowThread();
  if (windowThread == nullptr) return FailWithoutDesktop(request);
  if (windowThread == caller) {
    const int answer = RunBox(*caller, request);
    // A thread without windows, which may never look at messages again, does not stay it.
    if (joined && Windows().OfThread(*caller).empty()) LeaveDesktop(*caller);
    return answer;
  }
  bool asked = false;
  int answer = 0;
  windowThread->Call([&] {
    // It may have left the desktop before it came to this.
    asked = WindowThread() == windowThread;
    if (asked) answer = RunBox(*windowThread, request);
  });
  return asked ? answer : FailWithoutDesktop(request);
}

}  // namespace

void SetMessageBoxResponder(MessageBoxResponder responder) {
  ResponderSlot& slot = Slot();
  const std::lock_guard lock(slot.mutex);
  slot.responder = std::move(responder);
}

}  // namespace platform

using namespace platform;

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
  if (owner != nullptr && FindWindowOf(owner) == nullptr) return 0;
  if (!IsSupported(type)) {
    LogLine("MessageBoxW: unsupported type " + std::to_string(type));
    ::SetLastError(ERROR_INVALID_MSGBOX_STYLE);
    return 0;
  }
  // Without a caption a message box is about an error, as documented.
  const MessageBoxRequest request{owner, text != nullptr ? text : L"",
                                  caption != nullptr ? caption : L"Error", type};
  if (const MessageBoxResponder responder = CurrentResponder()) return responder(request);
  return AskOnDesktop(request);
}
