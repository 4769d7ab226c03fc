// The desktop's side of a window: a widget behind an interface. Every window of the window thread
// has one (those of HWND_MESSAGE excepted), made when the window is and ended with it; windows of
// other threads and of machines without a desktop have none. Lives on the window thread. Lengths
// are pixels of 96 to the inch. A top-level window has no frame as far as the layer is concerned:
// its place is that of its client area.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/gdi/canvas.h"

namespace platform {

// What the mouse did, told as to a window of a class with CS_DBLCLKS.
struct MouseInput {
  UINT message = 0;
  // In the client area of the window that is told; outside of it never.
  POINT place{};
};

// A key that went down, or is held down and repeats itself, or went up.
struct KeyInput {
  int virtualKey = 0;
  // As the high word of a key message's lParam has it: with KF_EXTENDED.
  UINT scanCode = 0;
  bool isDown = false;
  bool isRepeat = false;
  // What the user's keyboard layout makes of it; may be empty.
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

// What a peer reports of what the user did. Called from inside an event of the desktop, where no
// window procedure may run: whoever hears of it defers the messages (ThreadQueue::Defer). Painting
// alone is answered at once.
class WindowEvents {
 public:
  virtual ~WindowEvents() = default;

  // Exposed: what stood there is lost, so the background is to be erased.
  virtual void OnPaint(Canvas& canvas, const RECT& damaged, bool exposed) = 0;
  virtual void OnCloseRequested() = 0;
  // By the user or the window manager, not by SetBounds.
  virtual void OnBoundsChanged(const RECT& place) = 0;
  virtual void OnActivationChanged(bool active) = 0;
  virtual void OnFocusChanged(bool focused) = 0;
  // F1 with the focus on this window.
  virtual void OnHelpRequested() = 0;
  // By windows that paint themselves; the system's controls use mouse and keys themselves.
  virtual void OnMouse(const MouseInput& input) = 0;
  // False: it is none of the window's own, and the desktop may make use of it.
  virtual bool OnKey(const KeyInput& input) = 0;
  // SB_HORZ or SB_VERT, one of SB_LINEUP to SB_ENDSCROLL, and where the thumb is. The bar itself
  // does not move, but for the thumb while it is dragged.
  virtual void OnScroll(int bar, UINT request, int place) = 0;
};

// A scroll bar of a window, as it is to be shown. A page of zero has a thumb of the least size.
struct ScrollBarView {
  bool isShown = false;
  int minimum = 0;
  int maximum = 0;
  int page = 0;
  int position = 0;
};

// How wide a vertical bar is, and how high a horizontal one. They lie at the right and at the
// bottom; what is left of the window is its client area.
inline constexpr int kScrollBarThickness = 17;

// A caret is there for that long, then away for that long.
inline constexpr UINT kCaretBlinkMilliseconds = 530;

class WindowPeer {
 public:
  // May be called from inside the peer's own event: the widget itself ends later.
  virtual ~WindowPeer() = default;

  // Names the widget for whoever looks for it on the desktop; a child's number.
  virtual void SetIdentity(HWND window, UINT_PTR id) = 0;
  virtual void SetText(const std::wstring& text) = 0;
  // Relative to the parent's client area, or to the screen.
  virtual void SetBounds(const RECT& place) = 0;
  virtual void SetShown(bool shown) = 0;
  // Shows a top-level window without giving it the keyboard.
  virtual void ShowInactive() = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual void SetFont(const LOGFONTW& font) = 0;
  virtual void Focus() = 0;
  // Brings a top-level window to the front and gives it the keyboard.
  virtual void Activate() = 0;
  // Paints the area again, soon.
  virtual void Invalidate(const RECT& area) = 0;
  // Paints at once what is to be painted.
  virtual void PaintNow() = 0;
  // What the pointer looks like over the window. Nothing happens for the system's controls.
  virtual void SetPointer(PointerShape shape) = 0;

  // --- windows that keep what they show; the peers of the system's controls do none of this ---
  // Draws on what the window shows, which is seen soon; false when this window has no such thing.
  // What a hidden window is drawn is clipped away.
  virtual bool Draw(const std::function<void(Canvas&)>& work) = 0;
  // SB_HORZ or SB_VERT. They take no keyboard.
  virtual void SetScrollBar(int bar, const ScrollBarView& view) = 0;
  // In the client area, blinking over what is shown; nothing: there is none.
  virtual void SetCaret(const std::optional<RECT>& place) = 0;
};

class WindowPeers {
 public:
  virtual ~WindowPeers() = default;

  // A top-level window; the owner may be null. It stays above its owner.
  virtual std::unique_ptr<WindowPeer> MakeTopLevel(WindowEvents& events, WindowPeer* owner) = 0;
  // A window inside another one that paints itself or only holds others. Both keep what they show.
  virtual std::unique_ptr<WindowPeer> MakeChild(WindowEvents& events, WindowPeer& parent) = 0;
  // A dialog inside another one, which keeps nothing.
  virtual std::unique_ptr<WindowPeer> MakePage(WindowEvents& events, WindowPeer& parent) = 0;

  virtual POINT CursorPosition() = 0;
  // Of the first screen.
  virtual SIZE ScreenSize() = 0;
  // The work area of the screen at that place.
  virtual RECT WorkArea(POINT place) = 0;
};

}  // namespace platform
