// The desktop's side of a window: a widget behind an interface. Every window of the window thread
// has one (those of HWND_MESSAGE excepted), made when the window is and ended with it; windows of
// other threads and of machines without a desktop have none. Lives on the window thread. Lengths
// are pixels of 96 to the inch. A top-level window has no frame as far as the layer is concerned:
// its place is that of its client area.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "platform/gdi/canvas.h"

namespace platform {

// What a peer reports of what the user did. Called from inside an event of the desktop, where no
// window procedure may run: whoever hears of it defers the messages (ThreadQueue::Defer). Painting
// alone is answered at once.
class WindowEvents {
 public:
  virtual ~WindowEvents() = default;

  virtual void OnPaint(Canvas& canvas, const RECT& damaged) = 0;
  virtual void OnCloseRequested() = 0;
  // By the user or the window manager, not by SetPlace.
  virtual void OnPlaceChanged(const RECT& place) = 0;
  virtual void OnActivationChanged(bool active) = 0;
  virtual void OnFocusChanged(bool focused) = 0;
  // F1 with the focus on this window.
  virtual void OnHelpRequested() = 0;
};

class WindowPeer {
 public:
  // May be called from inside the peer's own event: the widget itself ends later.
  virtual ~WindowPeer() = default;

  // Names the widget for whoever looks for it on the desktop; a child's number.
  virtual void SetIdentity(HWND window, UINT_PTR id) = 0;
  virtual void SetText(const std::wstring& text) = 0;
  // Relative to the parent's client area, or to the screen.
  virtual void SetPlace(const RECT& place) = 0;
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
};

enum class TopLevelKind { kPlain, kDialog };

class WindowPeers {
 public:
  virtual ~WindowPeers() = default;

  // A top-level window; the owner may be null. It stays above its owner.
  virtual std::unique_ptr<WindowPeer> MakeTopLevel(WindowEvents& events, TopLevelKind kind,
                                                   WindowPeer* owner) = 0;
  // A window inside another one that paints itself or only holds others.
  virtual std::unique_ptr<WindowPeer> MakeChild(WindowEvents& events, WindowPeer& parent) = 0;

  virtual POINT CursorPlace() = 0;
  // Of the first screen.
  virtual SIZE ScreenSize() = 0;
  // The work area of the screen at that place.
  virtual RECT WorkArea(POINT place) = 0;
};

}  // namespace platform
