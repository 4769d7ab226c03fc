// The desktop's side of dialogs. For the window thread.
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

  // A key pressed while the dialog, or a window inside it, has the focus. True when the dialog uses
  // the key; the window with the focus does not get it then.
  virtual bool OnDialogKey(DialogKey key, HWND focus) = 0;
  // The user has moved the focus to that window, the dialog itself or one inside it.
  virtual void OnFocusMoved(HWND focus) = 0;
};

class DialogPeer : public WindowPeer {
 public:
  // Blocks input to the owner while the dialog is open. Called before the dialog is shown.
  virtual void SetModal() = 0;
  // Moves the focus to a control of the dialog as Tab does: the text of an edit control is
  // selected.
  virtual void FocusByTab(WindowPeer& control, bool forward) = 0;
};

class DialogPeers {
 public:
  virtual ~DialogPeers() = default;

  // Creates a top-level window of fixed size; the owner may be null. The events must outlive the
  // peer.
  virtual std::unique_ptr<DialogPeer> MakeDialog(WindowEvents& events, DialogEvents& dialogEvents,
                                                 WindowPeer* owner) = 0;
};

// Implemented by the desktop module.
class DialogSide {
 public:
  virtual ~DialogSide() = default;
  virtual DialogPeers& Dialogs() = 0;
  // Shows the box, gives it the focus and returns at once.
  virtual std::unique_ptr<ShownMessageBox> ShowMessageBox(const MessageBoxView& view) = 0;
};

}  // namespace platform
