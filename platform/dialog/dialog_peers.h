// The desktop's side of dialogs. Lives on the window thread.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/dialog/message_box.h"
#include "platform/user/window_peer.h"

namespace platform {

enum class DialogKey {
  kTab,
  kBackTab,
  kForward,   // arrow to the right or down
  kBackward,  // arrow to the left or up
  kEnter,
  kEscape,
  kNextPage,      // Ctrl+Tab, Ctrl+PageDown
  kPreviousPage,  // Ctrl+Shift+Tab, Ctrl+PageUp
};

// Called inside an event of the desktop.
class DialogEvents {
 public:
  virtual ~DialogEvents() = default;

  // A key on its way to the window with the keyboard, the dialog itself or one inside it. True: it
  // was for the dialog, and the window does not get it.
  virtual bool OnDialogKey(DialogKey key, HWND focus) = 0;
  // The user has moved the keyboard to that window, the dialog itself or one inside it.
  virtual void OnFocusMoved(HWND focus) = 0;
};

class DialogPeer : public WindowPeer {
 public:
  // Keeps the owner from the user as long as the dialog is open. Before it is shown.
  virtual void SetModal() = 0;
  // Gives the keyboard to a control of the dialog as Tab does: a field is selected whole.
  virtual void FocusByTab(WindowPeer& control, bool forward) = 0;
};

class DialogPeers {
 public:
  virtual ~DialogPeers() = default;

  // A top-level window of fixed size; the owner may be null. The events outlive the peer.
  virtual std::unique_ptr<DialogPeer> MakeDialog(WindowEvents& events, DialogEvents& dialogEvents,
                                                 WindowPeer* owner) = 0;
};

// Implemented by the desktop module.
class DialogSide {
 public:
  virtual ~DialogSide() = default;
  virtual DialogPeers& Dialogs() = 0;
  // Shows the box, which gets the keyboard, and returns at once.
  virtual std::unique_ptr<ShownMessageBox> ShowMessageBox(const MessageBoxView& view) = 0;
};

}  // namespace platform
