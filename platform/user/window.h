// Windows: top-level ones and children, each owned by the thread that made it. A window's handle,
// procedure and user data may be used by any thread; all else by its own.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "platform/gdi/lent_dc.h"
#include "platform/kernel/handle_table.h"
#include "platform/user/control.h"
#include "platform/user/scroll_bars.h"
#include "platform/user/thread_queue.h"
#include "platform/user/window_class.h"
#include "platform/user/window_peer.h"

namespace platform {

// One WM_PAINT, as long as the desktop asks for it.
struct Painting {
  Canvas& canvas;
  RECT damaged;
  std::unique_ptr<LentDc> context;  // between BeginPaint and EndPaint
};

class Window final : public Object {
 public:
  HWND handle = nullptr;
  std::shared_ptr<const WindowClass> windowClass;
  std::shared_ptr<ThreadQueue> queue;
  // The parent of a child, else the owner; null or HWND_MESSAGE without either.
  HWND parent = nullptr;
  bool isChild = false;
  bool isBeingDestroyed = false;
  std::atomic<WNDPROC> procedure = nullptr;
  std::atomic<LONG_PTR> userData = 0;
  DWORD style = 0;
  DWORD exStyle = 0;
  // Relative to the parent's client area, or to the screen; frames do not count.
  RECT place{};
  // Of a top-level window: its procedure has been told its place, as happens when it is first
  // shown.
  bool knowsPlace = false;
  ScrollBarPair scrollBars;
  // A child's number.
  UINT_PTR id = 0;
  std::wstring text;
  HFONT font = nullptr;
  DWORD helpContext = 0;
  // What a window of one of the system's classes does; null for a registered class.
  std::unique_ptr<Control> control;
  Painting* painting = nullptr;
  // The background is to be erased when the window is next painted.
  bool mustErase = false;
  // Who hears what the user does to the peer.
  std::unique_ptr<WindowEvents> events;
  // Null without a desktop. It stays, hidden, until the thread next runs deferred work after the
  // window has ended: whoever sent the message that ended the window may still use it.
  std::unique_ptr<WindowPeer> peer;

  bool BelongsToCaller() const;
  // Whether the handle still stands for this window.
  bool IsLive() const;
  bool IsShown() const { return (style & WS_VISIBLE) != 0; }
  // Both as the window's own style has it, whatever its parents'.
  bool IsDisabled() const { return (style & WS_DISABLED) != 0; }
  LRESULT CallProcedure(UINT message, WPARAM wParam, LPARAM lParam) const;
};

// The window of a live handle; null, with ERROR_INVALID_WINDOW_HANDLE as the last error, for any
// other.
std::shared_ptr<Window> FindWindowOf(HWND handle);

// Runs the work on the window's thread while the caller waits. False, with
// ERROR_INVALID_WINDOW_HANDLE as the last error, when the window is gone by then.
bool RunOnOwner(const std::shared_ptr<Window>& window, const std::function<void()>& work);

// Whether the calling thread may take messages and timers of that window; null stands for the
// thread itself. Sets the last error when it may not.
bool BelongsToCaller(HWND handle);

bool ClassHasWindows(const WindowClass& windowClass);

// Ends the windows of a thread that ends. Their procedures are not called, since what they use may
// be gone already.
void ForgetWindowsOf(const ThreadQueue& queue);

}  // namespace platform
