#include "platform/user/screen.h"

#include <optional>

#include "platform/kernel/log.h"
#include "platform/user/cursor_source.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr int kSmallIcon = 16;

std::optional<POINT> KnownCursorPlace() {
  if (const CursorSource source = CurrentCursorSource()) return source();
  std::optional<POINT> place;
  AskDesktop([&](DesktopModule& desktop) { place = desktop.Windows().CursorPlace(); });
  return place;
}

}  // namespace

bool AskDesktop(const std::function<void(DesktopModule&)>& question) {
  const auto windowThread = WindowThread();
  if (windowThread == nullptr) return false;
  if (windowThread == CurrentQueue()) {
    question(Desktop());
    return true;
  }
  bool asked = false;
  windowThread->Call([&] {
    // It may have left the desktop before it came to this.
    asked = WindowThread() == windowThread;
    if (asked) question(Desktop());
  });
  return asked;
}

SIZE ScreenSize() {
  // A program may ask for the screen before it has a window.
  JoinDesktop(CurrentQueue());
  SIZE size{};
  AskDesktop([&](DesktopModule& desktop) { size = desktop.Windows().ScreenSize(); });
  return size;
}

}  // namespace platform

using namespace platform;

BOOL WINAPI GetCursorPos(LPPOINT place) {
  if (place == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return FALSE;
  }
  if (const auto known = KnownCursorPlace()) {
    *place = *known;
    return TRUE;
  }
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return FALSE;
}

int WINAPI GetSystemMetrics(int index) {
  switch (index) {
    case SM_CXSCREEN:
      return ScreenSize().cx;
    case SM_CYSCREEN:
      return ScreenSize().cy;
    case SM_CXSMICON:
    case SM_CYSMICON:
      return kSmallIcon;
    default:
      LogLine("GetSystemMetrics: unsupported index " + std::to_string(index));
      return 0;
  }
}
