// What the controls have in common: the peer, the font and the notifications to the parent. Owned
// by the window, on the window thread.
#pragma once

#include <windows.h>

#include <string>

#include "platform/controls/control_peers.h"
#include "platform/user/control.h"
#include "platform/user/window.h"

namespace platform {

// Copies the text, cut to the buffer, whose size is in characters, and terminates it. Returns the
// number of characters copied, without the null; 0 without a buffer.
int CopyBounded(const std::wstring& text, wchar_t* buffer, int characters);

class BasicControl : public Control {
 public:
  BasicControl(const BasicControl&) = delete;
  BasicControl& operator=(const BasicControl&) = delete;

 protected:
  explicit BasicControl(Window& window) : window_(window) {}

  Window& Self() const { return window_; }
  PeerOrigin Origin(WindowPeer* parent) const;

  // Sends WM_COMMAND to the parent: Command at once, for what a message caused; CommandLater as
  // deferred work, for what the user did. The parent may destroy the control in Command.
  void Command(WORD code) const;
  void CommandLater(WORD code) const;

  // Sends WM_NOTIFY to the parent, in the same two ways. Notification begins with an NMHDR, which
  // is filled in. Notify returns the parent's reply, 0 without a parent; the parent may change the
  // notification.
  template <class Notification>
  LRESULT Notify(UINT code, Notification& notification) const {
    *reinterpret_cast<NMHDR*>(&notification) = Header(code);
    return SendNotification(window_.Handle(), reinterpret_cast<NMHDR*>(&notification));
  }
  template <class Notification>
  void NotifyLater(UINT code, Notification notification) const {
    *reinterpret_cast<NMHDR*>(&notification) = Header(code);
    window_.Queue()->Defer([window = window_.Handle(), notification]() mutable {
      SendNotification(window, reinterpret_cast<NMHDR*>(&notification));
    });
  }

  // Runs the work on this control, whose type is ThisControl, as deferred work, if its window still
  // exists then.
  template <class ThisControl, class Work>
  void Later(Work work) const {
    window_.Queue()->Defer([window = window_.Handle(), work] {
      const auto found = FindWindowOf(window);
      if (found != nullptr) work(static_cast<ThisControl&>(*found->SystemControl()));
    });
  }

  // Moves the focus to the first control after this one that can take it, as the mnemonic of a
  // label does.
  void FocusNext() const;

  void Resize(int width, int height) const;

  // Logs that the control does not support the message, and returns the documented failure.
  LRESULT Refuse(const char* control, UINT message, LRESULT failure) const;

 private:
  NMHDR Header(UINT code) const { return {window_.Handle(), window_.Id(), code}; }
  static LRESULT SendNotification(HWND window, NMHDR* header);

  Window& window_;
};

}  // namespace platform
