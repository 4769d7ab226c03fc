#include "platform/user/window_bounds.h"

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/focus.h"
#include "platform/user/painting.h"
#include "platform/user/screen.h"
#include "platform/user/window_relations.h"
#include "platform/user/window_showing.h"

namespace platform {
namespace {

constexpr UINT kSupportedFlags =
    SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_HIDEWINDOW;

bool HasWidth(const RECT& one, const RECT& other) {
  return one.right - one.left == other.right - other.left;
}

bool HasHeight(const RECT& one, const RECT& other) {
  return one.bottom - one.top == other.bottom - other.top;
}

bool HasSize(const RECT& one, const RECT& other) {
  return HasWidth(one, other) && HasHeight(one, other);
}

void NotifySize(const Window& window) {
  const RECT area = ClientAreaOf(window);
  window.CallProcedure(WM_SIZE, SIZE_RESTORED, MAKELPARAM(area.right, area.bottom));
}

bool IsAt(const RECT& one, const RECT& other) {
  return one.left == other.left && one.top == other.top;
}

void DamageWhatClassWants(Window& window, const RECT& before, const RECT& now) {
  const UINT style = window.Class()->data.style;
  const bool isWanted = ((style & CS_HREDRAW) != 0 && !HasWidth(before, now)) ||
                        ((style & CS_VREDRAW) != 0 && !HasHeight(before, now));
  if (isWanted) Damage(window, ClientAreaOf(window), true);
}

RECT NewBounds(const RECT& current, int x, int y, int width, int height, UINT flags) {
  const LONG left = (flags & SWP_NOMOVE) != 0 ? current.left : x;
  const LONG top = (flags & SWP_NOMOVE) != 0 ? current.top : y;
  const LONG wide = (flags & SWP_NOSIZE) != 0 ? current.right - current.left : std::max(width, 0);
  const LONG high = (flags & SWP_NOSIZE) != 0 ? current.bottom - current.top : std::max(height, 0);
  return {left, top, left + wide, top + high};
}

void Rearrange(const std::shared_ptr<Window>& window, const RECT& bounds, UINT flags) {
  const bool activate =
      !window->IsChild() && (flags & (SWP_NOACTIVATE | SWP_NOZORDER | SWP_HIDEWINDOW)) == 0;
  SetWindowBounds(*window, bounds);
  if (!window->IsLive()) return;
  if ((flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0) {
    SetShown(window, (flags & SWP_SHOWWINDOW) != 0, activate);
  } else if (activate && window->IsShown()) {
    Activate(window);
  }
}

// The position of the window's client area on the screen; zero for the desktop window. False when
// the window is gone.
bool OriginOf(HWND window, POINT& origin) {
  origin = {};
  if (IsDesktopWindow(window)) return true;
  const auto found = FindWindowOf(window);
  if (found == nullptr) return false;
  return RunOnOwner(found, [&] {
    const RECT bounds = ScreenBoundsOf(*found);
    origin = {bounds.left, bounds.top};
  });
}

// Moves the point by so many times that position. False without a point, or when the window is
// gone.
bool MovePoint(HWND window, POINT* point, int times) {
  POINT origin{};
  if (point == nullptr || !OriginOf(window, origin)) return false;
  *point = {point->x + times * origin.x, point->y + times * origin.y};
  return true;
}

// The window's bounds in screen coordinates. `wanted`, the caller's buffer, is only checked. False,
// with the last error set, on failure.
bool BoundsOnScreen(HWND window, RECT* wanted, RECT& bounds) {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return false;
  if (wanted == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return false;
  }
  if (IsDesktopWindow(window)) {
    const SIZE screen = ScreenSize();
    bounds = {0, 0, screen.cx, screen.cy};
    return true;
  }
  return RunOnOwner(found, [&] { bounds = ScreenBoundsOf(*found); });
}

}  // namespace

RECT ScreenBoundsOf(const Window& window) {
  RECT bounds = window.Bounds();
  const auto parent = window.IsChild() ? ParentOf(window) : nullptr;
  if (parent == nullptr) return bounds;
  const RECT outer = ScreenBoundsOf(*parent);
  return {bounds.left + outer.left, bounds.top + outer.top, bounds.right + outer.left,
          bounds.bottom + outer.top};
}

void SetWindowBounds(Window& window, const RECT& bounds) {
  const RECT before = window.Bounds();
  if (IsAt(before, bounds) && HasSize(before, bounds)) return;
  window.SetBounds(bounds);
  DamageAfterSizing(window, before);
  NotifyBoundsChange(window, before);
}

RECT ClientAreaOf(const Window& window) {
  const SIZE taken = TakenByScrollBars(window);
  const RECT& bounds = window.Bounds();
  return {0, 0, std::max(bounds.right - bounds.left - taken.cx, LONG{0}),
          std::max(bounds.bottom - bounds.top - taken.cy, LONG{0})};
}

void DamageAfterSizing(Window& window, const RECT& before) {
  DamageWhatClassWants(window, before, window.Bounds());
}

void NotifyClientChange(Window& window, const RECT& before) {
  const RECT area = ClientAreaOf(window);
  if (HasSize(area, before)) return;
  DamageWhatClassWants(window, before, area);
  NotifySize(window);
}

void NotifyBoundsChange(const Window& window, const RECT& before) {
  const RECT bounds = window.Bounds();
  if (!IsAt(before, bounds)) {
    window.CallProcedure(WM_MOVE, 0, MAKELPARAM(bounds.left, bounds.top));
  }
  if (window.IsLive() && !HasSize(before, bounds)) {
    NotifySize(window);
  }
}

void NotifyBounds(Window& window) {
  window.NoteBoundsSent();
  NotifySize(window);
  if (!window.IsLive()) return;
  window.CallProcedure(WM_MOVE, 0, MAKELPARAM(window.Bounds().left, window.Bounds().top));
}

RECT BoundsAsGiven(int x, int y, int width, int height) {
  const SIZE screen = x == CW_USEDEFAULT || width == CW_USEDEFAULT ? ScreenSize() : SIZE{};
  const RECT origin =
      x == CW_USEDEFAULT ? RECT{screen.cx / 8, screen.cy / 8, 0, 0} : RECT{x, y, 0, 0};
  const SIZE size = width == CW_USEDEFAULT ? SIZE{screen.cx * 3 / 4, screen.cy * 3 / 4}
                                           : SIZE{std::max(width, 0), std::max(height, 0)};
  return {origin.left, origin.top, origin.left + size.cx, origin.top + size.cy};
}

}  // namespace platform

using namespace platform;

BOOL WINAPI SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height,
                         UINT flags) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  const bool reorders = (flags & SWP_NOZORDER) == 0 && insertAfter != HWND_TOP;
  if ((flags & ~kSupportedFlags) != 0 || reorders) {
    LogLine("SetWindowPos: flags or order of windows not supported");
    ::SetLastError(reorders ? ERROR_INVALID_PARAMETER : ERROR_INVALID_FLAGS);
    return FALSE;
  }
  return RunOnOwner(found,
                    [&] {
                      Rearrange(found, NewBounds(found->Bounds(), x, y, width, height, flags),
                                flags);
                    })
             ? TRUE
             : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) try {
  if (!::SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE)) {
    return FALSE;
  }
  return repaint ? ::InvalidateRect(window, nullptr, TRUE) : TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI GetWindowRect(HWND window, LPRECT place) try {
  RECT found{};
  if (!BoundsOnScreen(window, place, found)) return FALSE;
  *place = found;
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI GetClientRect(HWND window, LPRECT area) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  if (area == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return FALSE;
  }
  if (IsDesktopWindow(window)) return ::GetWindowRect(window, area);
  return RunOnOwner(found, [&] { *area = ClientAreaOf(*found); }) ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI ClientToScreen(HWND window, LPPOINT point) try {
  return MovePoint(window, point, 1) ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI ScreenToClient(HWND window, LPPOINT point) try {
  return MovePoint(window, point, -1) ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
