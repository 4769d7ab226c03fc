// Carets: one for each thread, in one of its windows. The desktop shows and blinks the caret over
// what the window shows, so a window that paints need not hide it.
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/window.h"

namespace platform {
namespace {

struct Caret {
  HWND window = nullptr;
  SIZE size{};
  POINT position{};
  // The number of HideCaret calls to undo; the caret is shown at zero.
  int hidden = 1;
};
thread_local Caret caret;

// Null without a caret, or when its window has been destroyed; the caret is gone with its window.
std::shared_ptr<Window> WindowOfCaret() {
  return Resolve<Window>(HandleKind::kWindow, caret.window);
}

// The window of the caret. A null argument matches any window. Null, with the last error set, when
// there is no caret or another window has it.
std::shared_ptr<Window> WindowWithCaret(HWND window) {
  auto found = WindowOfCaret();
  if (found != nullptr && (window == nullptr || window == caret.window)) return found;
  ::SetLastError(ERROR_ACCESS_DENIED);
  return nullptr;
}

void UpdatePeer(const Window& window) {
  if (window.Peer() == nullptr) return;
  const RECT area = {caret.position.x, caret.position.y, caret.position.x + caret.size.cx,
                     caret.position.y + caret.size.cy};
  window.Peer()->SetCaret(caret.hidden == 0 ? std::optional(area) : std::nullopt);
}

void RemoveCaret() {
  const auto window = WindowOfCaret();
  if (window != nullptr && window->Peer() != nullptr) window->Peer()->SetCaret(std::nullopt);
  caret = {};
}

}  // namespace
}  // namespace platform

using namespace platform;

BOOL WINAPI CreateCaret(HWND window, HBITMAP bitmap, int width, int height) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  if (!found->BelongsToCaller()) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  if (bitmap != nullptr || width < 0 || height < 0) {
    LogLine("CreateCaret: carets are solid");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  RemoveCaret();
  // A width or height of 0 stands for that of a window border.
  caret.window = window;
  caret.size = {width != 0 ? width : 1, height != 0 ? height : 1};
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI DestroyCaret() try {
  if (WindowWithCaret(nullptr) == nullptr) return FALSE;
  RemoveCaret();
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI ShowCaret(HWND window) try {
  const auto found = WindowWithCaret(window);
  if (found == nullptr) return FALSE;
  if (caret.hidden > 0 && --caret.hidden == 0) UpdatePeer(*found);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI HideCaret(HWND window) try {
  const auto found = WindowWithCaret(window);
  if (found == nullptr) return FALSE;
  if (++caret.hidden == 1) UpdatePeer(*found);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI SetCaretPos(int x, int y) try {
  const auto found = WindowWithCaret(nullptr);
  if (found == nullptr) return FALSE;
  caret.position = {x, y};
  if (caret.hidden == 0) UpdatePeer(*found);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI GetCaretPos(LPPOINT place) try {
  if (place == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return FALSE;
  }
  *place = WindowOfCaret() != nullptr ? caret.position : POINT{};
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
