// The widget of a drop-down list. Shows what the control passes to it. For the window thread.
#pragma once

#include <string>

#include "platform/user/window_peer.h"

namespace platform {

class ComboBoxEvents {
 public:
  virtual ~ComboBoxEvents() = default;

  // The user chose an item, possibly the one that is selected already. Called inside an event of
  // the desktop.
  virtual void OnChosen(int index) = 0;
};

class ComboBoxPeer : public WindowPeer {
 public:
  virtual void Insert(int index, const std::wstring& text) = 0;
  virtual void Remove(int index) = 0;
  virtual void Clear() = 0;
  // Below zero: none.
  virtual void Select(int index) = 0;
  // The height of the closed box with its font, in pixels.
  virtual int ClosedHeight() const = 0;
  // The height of the list that drops down, in pixels.
  virtual void SetListHeight(int height) = 0;
};

}  // namespace platform
