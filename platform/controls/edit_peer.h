// The widget of an edit control. Positions count characters. Lives on the window thread.
#pragma once

#include <string>

#include "platform/user/window_peer.h"

namespace platform {

class EditEvents {
 public:
  virtual ~EditEvents() = default;

  // By the user, not by SetText. Called inside an event of the desktop.
  virtual void OnEdited(const std::wstring& text) = 0;
};

// The caret stands at its end; nothing is selected when both are equal.
struct EditSelection {
  int anchor = 0;
  int caret = 0;
};

class EditPeer : public WindowPeer {
 public:
  virtual void SetSelection(const EditSelection& selection) = 0;
  virtual EditSelection Selection() const = 0;
  virtual void SetReadOnly(bool readOnly) = 0;
  // The most characters that the user can type; a longer text that is set stays.
  virtual void SetLimit(int characters) = 0;
};

}  // namespace platform
