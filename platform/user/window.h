// Windows: top-level ones and children, each owned by the thread that made it. A window's handle,
// origin, procedure and user data may be used by any thread; all else by its own.
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

// One WM_PAINT, as long as the desktop asks for it.
struct Painting {
  Canvas& canvas;
  RECT damaged;
  std::unique_ptr<LentDc> context;  // between BeginPaint and EndPaint
};

// What a window is created as.
struct WindowOrigin {
  std::shared_ptr<const WindowClass> windowClass;
  std::shared_ptr<ThreadQueue> queue;
  // The parent of a child, else the owner; null or HWND_MESSAGE without either.
  HWND parent = nullptr;
  DWORD style = 0;
  DWORD exStyle = 0;
  RECT bounds{};
  // A child's number.
  UINT_PTR id = 0;
  std::wstring text;
};

class Window final : public Object {
 public:
  explicit Window(WindowOrigin origin);
  // Called once, by the list of windows.
  void TakeHandle(HWND handle) { handle_ = handle; }

  HWND Handle() const { return handle_; }
  const std::shared_ptr<const WindowClass>& Class() const { return windowClass_; }
  const std::shared_ptr<ThreadQueue>& Queue() const { return queue_; }
  HWND Parent() const { return parent_; }
  bool IsChild() const { return isChild_; }
  bool BelongsToCaller() const;
  // Whether the handle still stands for this window.
  bool IsLive() const;

  WNDPROC Procedure() const { return procedure_; }
  WNDPROC ExchangeProcedure(WNDPROC procedure) { return procedure_.exchange(procedure); }
  LRESULT CallProcedure(UINT message, WPARAM wParam, LPARAM lParam) const;
  LONG_PTR UserData() const { return userData_; }
  LONG_PTR ExchangeUserData(LONG_PTR data) { return userData_.exchange(data); }

  // --- as the window's own style has it, whatever its parents' ---
  DWORD Style() const { return style_; }
  DWORD ExStyle() const { return exStyle_; }
  bool IsShown() const { return (style_ & WS_VISIBLE) != 0; }
  bool IsDisabled() const { return (style_ & WS_DISABLED) != 0; }
  void SetStyle(DWORD style) { style_ = style; }
  void SetExStyle(DWORD style) { exStyle_ = style; }
  void SetStyleBit(DWORD bit, bool isSet) { style_ = isSet ? style_ | bit : style_ & ~bit; }

  // --- what the peer shows too ---
  const std::wstring& Text() const { return text_; }
  void SetText(std::wstring text);
  UINT_PTR Id() const { return id_; }
  void SetId(UINT_PTR id);
  // Relative to the parent's client area, or to the screen; frames do not count.
  const RECT& Bounds() const { return bounds_; }
  void SetBounds(const RECT& bounds);
  HFONT FontHandle() const { return font_; }
  void SetFont(HFONT font);
  // What the peer shows already, or shows in its own way.
  void NoteText(std::wstring text) { text_ = std::move(text); }
  void NoteBounds(const RECT& bounds) { bounds_ = bounds; }
  void NoteFont(HFONT font) { font_ = font; }

  // Of a top-level window: its procedure has been told its place, as happens when it is first
  // shown.
  bool KnowsBounds() const { return knowsBounds_; }
  void NoteBoundsSent() { knowsBounds_ = true; }
  ScrollBarPair& ScrollBars() { return scrollBars_; }
  const ScrollBarPair& ScrollBars() const { return scrollBars_; }
  DWORD HelpContext() const { return helpContext_; }
  void SetHelpContext(DWORD number) { helpContext_ = number; }

  // --- painting ---
  // Null outside of WM_PAINT.
  Painting* CurrentPainting() const { return painting_; }
  void SetPainting(Painting* painting) { painting_ = painting; }
  // The background is to be erased when the window is next painted.
  void RequireErasing(bool erase) { mustErase_ = mustErase_ || erase; }
  bool TakeErasing() { return std::exchange(mustErase_, false); }

  // What a window of one of the system's classes does; null for a registered class.
  Control* SystemControl() const { return control_.get(); }
  void GiveControl(std::unique_ptr<Control> control) { control_ = std::move(control); }

  // Who hears what the user does to the peer.
  WindowEvents& Events() const { return *events_; }
  // Null without a desktop. It stays, hidden, until the thread next runs deferred work after the
  // window has ended: whoever sent the message that ended the window may still use it.
  WindowPeer* Peer() const { return peer_.get(); }
  void GivePeer(std::unique_ptr<WindowPeer> peer) { peer_ = std::move(peer); }
  void EndPeer() { peer_.reset(); }
  // The desktop has gone: nobody may use the peer any more, not even to end it.
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
