// The widget of a tab control: a row of tabs above a framed area. For the window thread.
#pragma once

#include <string>

#include "platform/user/window_peer.h"

namespace platform {

class TabEvents {
 public:
  virtual ~TabEvents() = default;

  // The user clicked that tab; the peer still shows the old one. Called inside an event of the
  // desktop.
  virtual void OnTabWanted(int index) = 0;
};

class TabPeer : public WindowPeer {
 public:
  virtual void Insert(int index, const std::wstring& text) = 0;
  virtual void SetTabText(int index, const std::wstring& text) = 0;
  virtual void Clear() = 0;
  // Below zero: none.
  virtual void Select(int index) = 0;
  // How much wider and higher, on each side, the control is than the area that its frame encloses.
  virtual RECT Margins() const = 0;
};

}  // namespace platform
