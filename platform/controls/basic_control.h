// What the controls have in common: their peer, their font and what they tell their parent. Owned
// by the window, on the window thread.
#pragma once

#include <windows.h>

#include <string>

#include "platform/controls/control_peers.h"
#include "platform/user/control.h"
#include "platform/user/window.h"

namespace platform {

// As much of the text as fits into the caller's buffer of so many characters, ended by a null.
// Nothing happens without a buffer. The number of characters before the null.
int CopyBounded(const std::wstring& text, wchar_t* buffer, int characters);

class BasicControl : public Control {
 public:
  BasicControl(const BasicControl&) = delete;
  BasicControl& operator=(const BasicControl&) = delete;

 protected:
  explicit BasicControl(Window& window) : window_(window) {}

  Window& Self() const { return window_; }
  PeerOrigin Origin(WindowPeer* parent) const;

  // WM_COMMAND to the parent: at once, for what a message caused; later, for what the user did. The
  // control may be gone after the first.
  void Command(WORD code) const;
  void CommandLater(WORD code) const;

  // WM_NOTIFY to the parent, in the same two ways. Notification begins with an NMHDR, which is
  // filled in. The parent's answer, which may have changed the notification; 0 without a parent.
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

  // Runs the work on this control (of the type named) later, if its window is still there.
  template <class ThisControl, class Work>
  void Later(Work work) const {
    window_.Queue()->Defer([window = window_.Handle(), work] {
      const auto found = FindWindowOf(window);
      if (found != nullptr) work(static_cast<ThisControl&>(*found->SystemControl()));
    });
  }

  // The keyboard goes to the first control after this one that takes it, as the mnemonic of a
  // label asks for.
  void FocusNext() const;

  void Resize(int width, int height) const;

  // Logs that the control does not know the message, and answers the documented failure.
  LRESULT Refuse(const char* control, UINT message, LRESULT failure) const;

 private:
  NMHDR Header(UINT code) const { return {window_.Handle(), window_.Id(), code}; }
  static LRESULT SendNotification(HWND window, NMHDR* header);

  Window& window_;
};

}  // namespace platform
