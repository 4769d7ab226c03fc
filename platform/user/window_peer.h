// The desktop's side of a window: a widget behind an interface. Every window of the window thread
// has a peer, created and destroyed with the window, except for those of HWND_MESSAGE. Windows of
// other threads and of machines without a desktop have none. For the window thread. Lengths are
// pixels of 96 to the inch. Frames do not exist for the layer: the bounds of a top-level window are
// those of its client area.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/gdi/canvas.h"

namespace platform {

// Mouse input, reported as to a window of a class with CS_DBLCLKS.
struct MouseInput {
  UINT message = 0;
  // In client coordinates of the window that gets the report; never outside its client area.
  POINT place{};
};

// A key that went down, repeats while held down, or went up.
struct KeyInput {
  int virtualKey = 0;
  // As in the high word of a key message's lParam, KF_EXTENDED included.
  UINT scanCode = 0;
  bool isDown = false;
  bool isRepeat = false;
  // The text that the user's keyboard layout produces; may be empty.
  std::wstring text;
};

enum class PointerShape {
  kNone,
  kArrow,
  kText,
  kWait,
  kCross,
  kSizeWestEast,
  kSizeNorthSouth,
  kHand
};

// What a peer reports of the user's actions. Called inside an event of the desktop, where no window
// procedure may run: implementations defer the messages (ThreadQueue::Defer). Only painting is
// handled at once.
class WindowEvents {
 public:
  virtual ~WindowEvents() = default;

  // `exposed`: what the area showed is lost, so the background is to be erased.
  virtual void OnPaint(Canvas& canvas, const RECT& damaged, bool exposed) = 0;
  virtual void OnCloseRequested() = 0;
  // A change by the user or the window manager, not by SetBounds.
  virtual void OnBoundsChanged(const RECT& bounds) = 0;
  virtual void OnActivationChanged(bool active) = 0;
  virtual void OnFocusChanged(bool focused) = 0;
  // F1 with the focus on this window.
  virtual void OnHelpRequested() = 0;
  // A right click, at that place of the screen. Reported by controls of system classes; other
  // windows get it from DefWindowProcW.
  virtual void OnContextMenuRequested(POINT place) = 0;
  // Reported by windows that paint themselves only; the controls of system classes handle the
  // mouse, and mostly keys, in their widgets.
  virtual void OnMouse(const MouseInput& input) = 0;
  // False when the window does not use the key; the desktop may handle it then.
  virtual bool OnKey(const KeyInput& input) = 0;
  // `bar` is SB_HORZ or SB_VERT, `request` one of SB_LINEUP to SB_ENDSCROLL, `position` that of the
  // thumb. The peer itself moves the thumb only while it is dragged.
  virtual void OnScroll(int bar, UINT request, int position) = 0;
};

// A scroll bar of a window, as it is to be shown. A page of zero shows the smallest thumb.
struct ScrollBarView {
  bool isShown = false;
  int minimum = 0;
  int maximum = 0;
  int page = 0;
  int position = 0;
};

// The width of a vertical bar and the height of a horizontal one, in pixels. Bars lie at the right
// and at the bottom; the rest of the window is its client area.
inline constexpr int kScrollBarThickness = 17;

// How long a blinking caret is shown, and how long it is hidden.
inline constexpr UINT kCaretBlinkMilliseconds = 530;

class WindowPeer {
 public:
  // May run inside the peer's own event: the widget itself is destroyed later.
  virtual ~WindowPeer() = default;

  // Names the widget for programs that search the desktop; `id` is a child's identifier.
  virtual void SetIdentity(HWND window, UINT_PTR id) = 0;
  virtual void SetText(const std::wstring& text) = 0;
  // Relative to the parent's client area, or to the screen.
  virtual void SetBounds(const RECT& bounds) = 0;
  virtual void SetShown(bool shown) = 0;
  // Shows a top-level window without activating it.
  virtual void ShowInactive() = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual void SetFont(const LOGFONTW& font) = 0;
  virtual void Focus() = 0;
  // Brings a top-level window to the front and gives it the focus.
  virtual void Activate() = 0;
  // Schedules painting of the area.
  virtual void Invalidate(const RECT& area) = 0;
  // Paints now what has been invalidated.
  virtual void PaintNow() = 0;
  // The cursor's shape over the window. Ignored by controls of system classes.
  virtual void SetPointer(PointerShape shape) = 0;

  // The functions from here on are for windows that keep what they show. Peers of controls of
  // system classes ignore them.

  // Draws over what the window shows; the screen follows soon. Drawing in a hidden window is
  // clipped away. False when this window cannot be drawn on.
  virtual bool Draw(const std::function<void(Canvas&)>& work) = 0;
  // `bar` is SB_HORZ or SB_VERT. Scroll bars never take the focus.
  virtual void SetScrollBar(int bar, const ScrollBarView& view) = 0;
  // In client coordinates, blinking over what the window shows; nothing: no caret.
  virtual void SetCaret(const std::optional<RECT>& bounds) = 0;
};

class WindowPeers {
 public:
  virtual ~WindowPeers() = default;

  // Creates a top-level window; the owner may be null. The window stays above its owner.
  virtual std::unique_ptr<WindowPeer> MakeTopLevel(WindowEvents& events, WindowPeer* owner) = 0;
  // Creates a child window that paints itself or only contains others. Top-level windows and these
  // keep what they show.
  virtual std::unique_ptr<WindowPeer> MakeChild(WindowEvents& events, WindowPeer& parent) = 0;
  // Creates a dialog inside another one, which does not keep what it shows.
  virtual std::unique_ptr<WindowPeer> MakePage(WindowEvents& events, WindowPeer& parent) = 0;

  virtual POINT CursorPosition() = 0;
  // Of the first screen.
  virtual SIZE ScreenSize() = 0;
  // The work area of the screen at that point.
  virtual RECT WorkArea(POINT point) = 0;
};

}  // namespace platform
