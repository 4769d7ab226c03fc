#include "platform/user/cursor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/window.h"

namespace platform {
namespace {

struct Cursor final : Object {
  explicit Cursor(PointerShape itsShape) : shape(itsShape) {}
  const PointerShape shape;
};

struct SystemCursor {
  WORD number;
  PointerShape shape;
  HCURSOR handle;
};

WORD NumberOf(LPCWSTR name) {
  return LOWORD(reinterpret_cast<ULONG_PTR>(name));
}

SystemCursor Make(LPCWSTR name, PointerShape shape) {
  void* handle = Handles().Insert(HandleKind::kCursor, std::make_shared<Cursor>(shape));
  return {NumberOf(name), shape, static_cast<HCURSOR>(handle)};
}

const auto& SystemCursors() {
  static const std::array cursors = {
      Make(IDC_ARROW, PointerShape::kArrow),
      Make(IDC_IBEAM, PointerShape::kText),
      Make(IDC_WAIT, PointerShape::kWait),
      Make(IDC_CROSS, PointerShape::kCross),
      Make(IDC_SIZEWE, PointerShape::kSizeWestEast),
      Make(IDC_SIZENS, PointerShape::kSizeNorthSouth),
      Make(IDC_HAND, PointerShape::kHand),
  };
  return cursors;
}

HCURSOR Arrow() {
  return SystemCursors().front().handle;
}

struct PointerState {
  HCURSOR cursor = Arrow();
  // The window that last got WM_SETCURSOR.
  HWND window = nullptr;
};
thread_local PointerState state;

void ShowPointer() {
  const auto window = Resolve<Window>(HandleKind::kWindow, state.window);
  if (window == nullptr || window->Peer() == nullptr) return;
  const auto cursor = Resolve<Cursor>(HandleKind::kCursor, state.cursor);
  window->Peer()->SetPointer(cursor != nullptr ? cursor->shape : PointerShape::kNone);
}

}  // namespace

void AskForCursor(HWND window, UINT mouseMessage) {
  state.window = window;
  ::SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
                 MAKELPARAM(HTCLIENT, mouseMessage));
  // A window that sets no cursor keeps the shape from before.
  ShowPointer();
}

}  // namespace platform

using namespace platform;

HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name) try {
  const auto& cursors = SystemCursors();
  const bool isSystem = instance == nullptr && IS_INTRESOURCE(name);
  const auto* found =
      isSystem ? std::ranges::find(cursors, NumberOf(name), &SystemCursor::number) : cursors.end();
  if (found != cursors.end()) return found->handle;
  LogLine("LoadCursorW: cursors of resources, and some of the system's: not supported");
  ::SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
  return nullptr;
} catch (...) {
  return FailedCall<HCURSOR>(nullptr);
}

HCURSOR WINAPI SetCursor(HCURSOR cursor) try {
  if (cursor != nullptr && Resolve<Cursor>(HandleKind::kCursor, cursor) == nullptr) {
    ::SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return nullptr;
  }
  const HCURSOR before = std::exchange(state.cursor, cursor);
  ShowPointer();
  return before;
} catch (...) {
  return FailedCall<HCURSOR>(nullptr);
}

HCURSOR WINAPI GetCursor() {
  return state.cursor;
}
