#include "platform/user/scroll_bars.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/painting.h"
#include "platform/user/window_bounds.h"

namespace platform {
namespace {

DWORD StyleOf(int bar) {
  return bar == SB_VERT ? WS_VSCROLL : bar == SB_HORZ ? WS_HSCROLL : WS_HSCROLL | WS_VSCROLL;
}

bool IsShown(const Window& window, int bar) {
  return window.SystemControl() == nullptr && (window.Style() & StyleOf(bar)) != 0;
}

ScrollBar& BarOf(Window& window, int bar) {
  return window.ScrollBars().at(static_cast<std::size_t>(bar));
}

int LastPosition(const ScrollBar& bar) {
  return std::max(bar.maximum - std::max(bar.page - 1, 0), bar.minimum);
}

bool CanScroll(const ScrollBar& bar) {
  return bar.maximum - std::max(bar.page - 1, 0) > bar.minimum;
}

// Limits page and position to the documented ranges.
void Restrict(ScrollBar& bar) {
  const LONGLONG range = LONGLONG{bar.maximum} - bar.minimum;
  bar.page = static_cast<int>(std::clamp<LONGLONG>(bar.page, 0, range + 1));
  bar.position = std::clamp(bar.position, bar.minimum, LastPosition(bar));
}

void UpdatePeer(Window& window, int bar) {
  if (window.Peer() == nullptr || window.SystemControl() != nullptr) return;
  const ScrollBar& state = BarOf(window, bar);
  window.Peer()->SetScrollBar(
      bar, {IsShown(window, bar), state.minimum, state.maximum, state.page, state.position});
}

// `bar` may be SB_BOTH: the change of the client area is notified once.
void SetShown(Window& window, int bar, bool shown) {
  const DWORD style = shown ? window.Style() | StyleOf(bar) : window.Style() & ~StyleOf(bar);
  if (style == window.Style()) return;
  const RECT before = ClientAreaOf(window);
  window.SetStyle(style);
  UpdatePeer(window, SB_HORZ);
  UpdatePeer(window, SB_VERT);
  NotifyClientChange(window, before);
}

// The window of a call for SB_HORZ or SB_VERT, or with takesBoth for SB_BOTH. Null, with the last
// error set, when the window has no such bars.
std::shared_ptr<Window> WindowWithBars(const char* function, HWND handle, int bar,
                                       bool takesBoth = false) {
  auto window = FindWindowOf(handle);
  if (window == nullptr) return nullptr;
  const bool isBar = bar == SB_HORZ || bar == SB_VERT || (takesBoth && bar == SB_BOTH);
  if (isBar && window->SystemControl() == nullptr) return window;
  LogLine(std::string(function) + ": only windows of registered classes have scroll bars");
  ::SetLastError(isBar ? ERROR_NO_SCROLLBARS : ERROR_INVALID_PARAMETER);
  return nullptr;
}

// Takes over the values and updates the peer. The bar is hidden when the range leaves nothing to
// scroll.
void Change(Window& window, int bar, const ScrollBar& changed) {
  ScrollBar& state = BarOf(window, bar);
  const bool could = CanScroll(state);
  state = changed;
  Restrict(state);
  UpdatePeer(window, bar);
  if (could != CanScroll(state)) SetShown(window, bar, !could);
}

}  // namespace

SIZE TakenByScrollBars(const Window& window) {
  return {IsShown(window, SB_VERT) ? kScrollBarThickness : 0,
          IsShown(window, SB_HORZ) ? kScrollBarThickness : 0};
}

void ShowFirstScrollBars(Window& window) {
  UpdatePeer(window, SB_HORZ);
  UpdatePeer(window, SB_VERT);
}

}  // namespace platform

using namespace platform;

BOOL WINAPI ShowScrollBar(HWND window, int bar, BOOL show) try {
  const auto found = WindowWithBars("ShowScrollBar", window, bar, true);
  if (found == nullptr) return FALSE;
  return RunOnOwner(found, [&] { SetShown(*found, bar, show != FALSE); }) ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI SetScrollRange(HWND window, int bar, int minimum, int maximum, BOOL /*redraw*/) try {
  const auto found = WindowWithBars("SetScrollRange", window, bar);
  if (found == nullptr) return FALSE;
  if (maximum < minimum || LONGLONG{maximum} - minimum > INT_MAX) {
    ::SetLastError(ERROR_INVALID_SCROLLBAR_RANGE);
    return FALSE;
  }
  return RunOnOwner(found,
                    [&] {
                      ScrollBar changed = BarOf(*found, bar);
                      changed.minimum = minimum;
                      changed.maximum = maximum;
                      Change(*found, bar, changed);
                    })
             ? TRUE
             : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

BOOL WINAPI GetScrollRange(HWND window, int bar, LPINT minimum, LPINT maximum) try {
  const auto found = WindowWithBars("GetScrollRange", window, bar);
  if (found == nullptr) return FALSE;
  if (minimum == nullptr || maximum == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return FALSE;
  }
  return RunOnOwner(found,
                    [&] {
                      const ScrollBar& state = BarOf(*found, bar);
                      *minimum = state.minimum;
                      *maximum = state.maximum;
                    })
             ? TRUE
             : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

int WINAPI SetScrollPos(HWND window, int bar, int position, BOOL /*redraw*/) try {
  const auto found = WindowWithBars("SetScrollPos", window, bar);
  int before = 0;
  if (found == nullptr) return before;
  RunOnOwner(found, [&] {
    ScrollBar changed = BarOf(*found, bar);
    before = std::exchange(changed.position, position);
    Change(*found, bar, changed);
  });
  return before;
} catch (...) {
  return FailedCall(0);
}

int WINAPI GetScrollPos(HWND window, int bar) try {
  const auto found = WindowWithBars("GetScrollPos", window, bar);
  int position = 0;
  if (found != nullptr) RunOnOwner(found, [&] { position = BarOf(*found, bar).position; });
  return position;
} catch (...) {
  return FailedCall(0);
}

int WINAPI SetScrollInfo(HWND window, int bar, LPCSCROLLINFO info, BOOL /*redraw*/) try {
  constexpr UINT kSupported = SIF_RANGE | SIF_PAGE | SIF_POS;
  const auto found = WindowWithBars("SetScrollInfo", window, bar);
  if (found == nullptr) return 0;
  // SIF_TRACKPOS, a part of SIF_ALL, can only be queried and is ignored here.
  const UINT mask = info != nullptr ? info->fMask & ~UINT{SIF_TRACKPOS} : 0;
  if (info == nullptr || info->cbSize != sizeof *info || (mask & ~kSupported) != 0) {
    LogLine("SetScrollInfo: only range, page and position can be set");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  int position = 0;
  RunOnOwner(found, [&] {
    ScrollBar changed = BarOf(*found, bar);
    if ((mask & SIF_RANGE) != 0) changed.minimum = info->nMin;
    if ((mask & SIF_RANGE) != 0) changed.maximum = std::max(info->nMin, info->nMax);
    if ((mask & SIF_PAGE) != 0)
      changed.page = static_cast<int>(std::min(info->nPage, UINT{INT_MAX}));
    if ((mask & SIF_POS) != 0) changed.position = info->nPos;
    Change(*found, bar, changed);
    position = BarOf(*found, bar).position;
  });
  return position;
} catch (...) {
  return FailedCall(0);
}

BOOL WINAPI GetScrollInfo(HWND window, int bar, LPSCROLLINFO info) try {
  const auto found = WindowWithBars("GetScrollInfo", window, bar);
  if (found == nullptr) return FALSE;
  if (info == nullptr || info->cbSize != sizeof *info || (info->fMask & SIF_ALL) == 0) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  return RunOnOwner(found,
                    [&] {
                      const ScrollBar& state = BarOf(*found, bar);
                      const UINT mask = info->fMask;
                      if ((mask & SIF_RANGE) != 0) info->nMin = state.minimum;
                      if ((mask & SIF_RANGE) != 0) info->nMax = state.maximum;
                      if ((mask & SIF_PAGE) != 0) info->nPage = static_cast<UINT>(state.page);
                      if ((mask & SIF_POS) != 0) info->nPos = state.position;
                      if ((mask & SIF_TRACKPOS) != 0) info->nTrackPos = state.tracked;
                    })
             ? TRUE
             : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}
