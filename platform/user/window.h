// Windows: top-level ones and children, each owned by the thread that created it. Any thread may
// use a window's handle, class, queue, parent, procedure and user data; all else is for the
// window's thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/gdi/lent_dc.h"
#include "platform/kernel/handle_table.h"
#include "platform/user/control.h"
#include "platform/user/scroll_bars.h"
#include "platform/user/thread_queue.h"
#include "platform/user/window_class.h"
#include "platform/user/window_peer.h"

namespace platform {

// The state of one WM_PAINT, which lives while the window paints.
struct Painting {
  Canvas& canvas;
  RECT damaged;
  std::unique_ptr<LentDc> context;  // between BeginPaint and EndPaint
};

// The arguments of a new window.
struct WindowOrigin {
  std::shared_ptr<const WindowClass> windowClass;
  std::shared_ptr<ThreadQueue> queue;
  // A child's parent, or a top-level window's owner; null or HWND_MESSAGE without either.
  HWND parent = nullptr;
  DWORD style = 0;
  DWORD exStyle = 0;
  RECT bounds{};
  // A child's identifier; 0 of a top-level window.
  UINT_PTR id = 0;
  std::wstring text;
};

class Window final : public Object {
 public:
  explicit Window(WindowOrigin origin);
  // Called once, when the window is added to the list of windows.
  void TakeHandle(HWND handle) { handle_ = handle; }

  HWND Handle() const { return handle_; }
  const std::shared_ptr<const WindowClass>& Class() const { return windowClass_; }
  const std::shared_ptr<ThreadQueue>& Queue() const { return queue_; }
  HWND Parent() const { return parent_; }
  bool IsChild() const { return isChild_; }
  bool BelongsToCaller() const;
  // Whether the handle still refers to this window.
  bool IsLive() const;

  WNDPROC Procedure() const { return procedure_; }
  WNDPROC ExchangeProcedure(WNDPROC procedure) { return procedure_.exchange(procedure); }
  LRESULT CallProcedure(UINT message, WPARAM wParam, LPARAM lParam) const;
  LONG_PTR UserData() const { return userData_; }
  LONG_PTR ExchangeUserData(LONG_PTR data) { return userData_.exchange(data); }

  // The window's own style bits; those of its parents do not count.
  DWORD Style() const { return style_; }
  DWORD ExStyle() const { return exStyle_; }
  bool IsShown() const { return (style_ & WS_VISIBLE) != 0; }
  bool IsDisabled() const { return (style_ & WS_DISABLED) != 0; }
  void SetStyle(DWORD style) { style_ = style; }
  void SetExStyle(DWORD style) { exStyle_ = style; }
  void SetStyleBit(DWORD bit, bool isSet) { style_ = isSet ? style_ | bit : style_ & ~bit; }

  // Properties that the peer shows, too; the setters pass them on to it.
  const std::wstring& Text() const { return text_; }
  void SetText(std::wstring text);
  UINT_PTR Id() const { return id_; }
  void SetId(UINT_PTR id);
  // Relative to the parent's client area, or to the screen. Frames are not included.
  const RECT& Bounds() const { return bounds_; }
  void SetBounds(const RECT& bounds);
  HFONT FontHandle() const { return font_; }
  void SetFont(HFONT font);
  // These change the property alone: the peer shows it already, or in its own way.
  void NoteText(std::wstring text) { text_ = std::move(text); }
  void NoteBounds(const RECT& bounds) { bounds_ = bounds; }
  void NoteFont(HFONT font) { font_ = font; }

  // Whether a top-level window has been sent its bounds (WM_SIZE, WM_MOVE), which happens when it
  // is first shown.
  bool KnowsBounds() const { return knowsBounds_; }
  void NoteBoundsSent() { knowsBounds_ = true; }
  ScrollBarPair& ScrollBars() { return scrollBars_; }
  const ScrollBarPair& ScrollBars() const { return scrollBars_; }
  DWORD HelpContext() const { return helpContext_; }
  void SetHelpContext(DWORD number) { helpContext_ = number; }

  // Painting. The current one is null outside of WM_PAINT.
  Painting* CurrentPainting() const { return painting_; }
  void SetPainting(Painting* painting) { painting_ = painting; }
  // Marks the background to be erased when the window is next painted.
  void RequireErasing(bool erase) { mustErase_ = mustErase_ || erase; }
  bool TakeErasing() { return std::exchange(mustErase_, false); }

  // The control of a window of a system class; null for a registered class.
  Control* SystemControl() const { return control_.get(); }
  void GiveControl(std::unique_ptr<Control> control) { control_ = std::move(control); }

  // Receives what the peer reports.
  WindowEvents& Events() const { return *events_; }
  // Null without a desktop. After the window is destroyed the peer stays, hidden, until the thread
  // next runs deferred work: the code that sent the destroying message may still use it.
  WindowPeer* Peer() const { return peer_.get(); }
  void GivePeer(std::unique_ptr<WindowPeer> peer) { peer_ = std::move(peer); }
  void EndPeer() { peer_.reset(); }
  // Gives up the peer without destroying it: after the loss of the desktop no peer may be used.
  void AbandonPeer() { static_cast<void>(peer_.release()); }

  bool IsBeingDestroyed() const { return isBeingDestroyed_; }
  void NoteDestruction() { isBeingDestroyed_ = true; }

 private:
  HWND handle_ = nullptr;
  const std::shared_ptr<const WindowClass> windowClass_;
  const std::shared_ptr<ThreadQueue> queue_;
  const HWND parent_;
  const bool isChild_;
  bool isBeingDestroyed_ = false;
  std::atomic<WNDPROC> procedure_;
  std::atomic<LONG_PTR> userData_ = 0;
  DWORD style_;
  DWORD exStyle_;
  RECT bounds_;
  bool knowsBounds_ = false;
  ScrollBarPair scrollBars_;
  UINT_PTR id_;
  std::wstring text_;
  HFONT font_ = nullptr;
  DWORD helpContext_ = 0;
  std::unique_ptr<Control> control_;
  Painting* painting_ = nullptr;
  bool mustErase_ = false;
  const std::unique_ptr<WindowEvents> events_;
  std::unique_ptr<WindowPeer> peer_;
};

// The window of a live handle; null, with ERROR_INVALID_WINDOW_HANDLE as the last error, for any
// other.
std::shared_ptr<Window> FindWindowOf(HWND handle);

// Runs the work on the window's thread while the caller waits. False, with
// ERROR_INVALID_WINDOW_HANDLE as the last error, when the window has been destroyed before the work
// could run.
bool RunOnOwner(const std::shared_ptr<Window>& window, const std::function<void()>& work);

// Whether the calling thread may retrieve messages and set timers of the window; null stands for
// the thread itself. Sets the last error when it may not.
bool BelongsToCaller(HWND handle);

bool ClassHasWindows(const WindowClass& windowClass);

// Removes the windows of a thread that ends. Their procedures are not called, since what they use
// may be destroyed already.
void ForgetWindowsOf(const ThreadQueue& queue);

}  // namespace platform
