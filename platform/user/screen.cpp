#include "platform/user/screen.h"

#include <optional>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/cursor_source.h"
#include "platform/user/desktop.h"
#include "platform/user/modal_loop.h"

namespace platform {
namespace {

constexpr int kSmallIcon = 16;

std::optional<POINT> KnownCursorPosition() {
  if (const CursorSource source = CurrentCursorSource()) return source();
  std::optional<POINT> position;
  CallWindowThread([&] { position = Desktop().Windows().CursorPosition(); });
  return position;
}

}  // namespace

SIZE ScreenSize() {
  // A program may query the screen before it has a window.
  JoinDesktop(CurrentQueue());
  SIZE size{};
  CallWindowThread([&] { size = Desktop().Windows().ScreenSize(); });
  return size;
}

RECT WorkArea() {
  JoinDesktop(CurrentQueue());
  RECT area{};
  CallWindowThread([&] { area = Desktop().Windows().WorkArea({}); });
  return area;
}

}  // namespace platform

using namespace platform;

BOOL WINAPI GetCursorPos(LPPOINT place) try {
  if (place == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return FALSE;
  }
  if (const auto known = KnownCursorPosition()) {
    *place = *known;
    return TRUE;
  }
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

int WINAPI GetSystemMetrics(int index) try {
  switch (index) {
    case SM_CXSCREEN:
      return ScreenSize().cx;
    case SM_CYSCREEN:
      return ScreenSize().cy;
    case SM_CXVSCROLL:
    case SM_CYHSCROLL:
      return kScrollBarThickness;
    case SM_SWAPBUTTON:
      // The desktop swaps the buttons itself, so the left button is always the primary one.
      return 0;
    case SM_CXSMICON:
    case SM_CYSMICON:
      return kSmallIcon;
    default:
      LogLine("GetSystemMetrics: unsupported index " + std::to_string(index));
      return 0;
  }
} catch (...) {
  return FailedCall(0);
}

BOOL WINAPI MessageBeep(UINT /*type*/) try {
  // The desktop has one sound for all types.
  const auto windowThread = WindowThread();
  if (windowThread == nullptr) {
    LogLine("MessageBeep: there is no desktop");
    ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
    return FALSE;
  }
  windowThread->Defer([] {
    if (IsWindowThread()) Desktop().Beep();
  });
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
