// The widget of an edit control. Positions count characters. For the window thread.
#pragma once

#include <string>

#include "platform/user/window_peer.h"

namespace platform {

class EditEvents {
 public:
  virtual ~EditEvents() = default;

  // The user changed the text. Not called for SetText. Called inside an event of the desktop.
  virtual void OnEdited(const std::wstring& text) = 0;
};

// A selection, with the caret at one end; empty when both are equal.
struct EditSelection {
  int anchor = 0;
  int caret = 0;
};

class EditPeer : public WindowPeer {
 public:
  virtual void SetSelection(const EditSelection& selection) = 0;
  virtual EditSelection Selection() const = 0;
  virtual void SetReadOnly(bool readOnly) = 0;
  // The maximum number of characters that the user can type. A longer text that the caller sets is
  // kept.
  virtual void SetLimit(int characters) = 0;
};

}  // namespace platform
