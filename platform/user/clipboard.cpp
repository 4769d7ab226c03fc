// The clipboard as far as a program fills it: with text, which the desktop offers to other
// programs. It is open for one thread and window at a time.
#include <algorithm>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/global_memory.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"
#include "platform/user/modal_loop.h"
#include "platform/user/window.h"

namespace platform {
namespace {

struct ClipboardRecord {
  std::mutex mutex;
  // The thread and the window that have opened it. The thread is 0 while it is closed.
  DWORD thread = 0;
  HWND window = nullptr;
  // Whether the window has emptied it and may fill it.
  bool isOwned = false;
  // Memory that was passed to it. Programs may read it until they close the clipboard.
  std::vector<HGLOBAL> given;

  bool IsOpenHere() const { return thread == ::GetCurrentThreadId(); }
};

ClipboardRecord& Record() {
  static auto& record = *new ClipboardRecord;
  return record;
}

bool Fail(DWORD error) {
  ::SetLastError(error);
  return false;
}

// The lock must not be held: the window thread may be waiting for it.
bool OfferText(const std::wstring& text) {
  if (CallWindowThread([&] { Desktop().SetClipboardText(text); })) return true;
  LogLine("clipboard: there is no desktop");
  return Fail(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
}

// Up to the null, or all of the block without one.
std::wstring TextIn(GlobalBlock& block) {
  const auto* text = reinterpret_cast<const wchar_t*>(block.Bytes().data());
  const auto* end = text + block.Bytes().size() / sizeof(wchar_t);
  return {text, std::find(text, end, L'\0')};
}

bool Open(HWND window) {
  if (window != nullptr && FindWindowOf(window) == nullptr) return false;
  if (WindowThread() == nullptr) {
    LogLine("clipboard: there is no desktop");
    return Fail(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  }
  ClipboardRecord& record = Record();
  const std::lock_guard lock(record.mutex);
  const bool isOpen =
      record.thread != 0 && (record.window == nullptr || ::IsWindow(record.window) != FALSE);
  if (isOpen && (!record.IsOpenHere() || record.window != window)) return Fail(ERROR_ACCESS_DENIED);
  record.thread = ::GetCurrentThreadId();
  record.window = window;
  record.isOwned = false;
  return true;
}

bool Empty() {
  ClipboardRecord& record = Record();
  {
    const std::lock_guard lock(record.mutex);
    if (!record.IsOpenHere()) return Fail(ERROR_CLIPBOARD_NOT_OPEN);
    record.isOwned = record.window != nullptr;
  }
  return OfferText({});
}

bool Fill(UINT format, HGLOBAL memory) {
  ClipboardRecord& record = Record();
  {
    const std::lock_guard lock(record.mutex);
    if (!record.IsOpenHere() || !record.isOwned) return Fail(ERROR_CLIPBOARD_NOT_OPEN);
  }
  if (format != CF_UNICODETEXT) {
    LogLine("clipboard: text only");
    return Fail(ERROR_INVALID_PARAMETER);
  }
  const auto block = FindGlobalBlock(memory);
  if (block == nullptr || !OfferText(TextIn(*block))) return false;
  const std::lock_guard lock(record.mutex);
  record.given.push_back(memory);
  return true;
}

bool Close() {
  ClipboardRecord& record = Record();
  const std::lock_guard lock(record.mutex);
  if (!record.IsOpenHere()) return Fail(ERROR_CLIPBOARD_NOT_OPEN);
  record.thread = 0;
  record.isOwned = false;
  for (const HGLOBAL memory : std::exchange(record.given, {}))
    ::GlobalFree(memory);
  return true;
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL WINAPI OpenClipboard(HWND owner) try { return Open(owner) ? TRUE : FALSE; } catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI EmptyClipboard() try { return Empty() ? TRUE : FALSE; } catch (...) {
  return FailedCall(FALSE);
}

HANDLE WINAPI SetClipboardData(UINT format, HANDLE memory) try {
  return Fill(format, memory) ? memory : nullptr;
} catch (...) {
  return FailedCall<HANDLE>(nullptr);
}

BOOL WINAPI CloseClipboard() try { return Close() ? TRUE : FALSE; } catch (...) {
  return FailedCall(FALSE);
}
