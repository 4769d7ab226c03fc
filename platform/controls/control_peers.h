// The desktop's side of the controls: a kind of peer for each class of control. For the window
// thread.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/controls/button_peer.h"
#include "platform/controls/combo_box_peer.h"
#include "platform/controls/date_picker_peer.h"
#include "platform/controls/edit_peer.h"
#include "platform/controls/list_view_peer.h"
#include "platform/controls/static_peer.h"
#include "platform/controls/tab_peer.h"
#include "platform/controls/tool_tip_peer.h"
#include "platform/controls/up_down_peer.h"

namespace platform {

// What every peer of a control is created with.
struct PeerOrigin {
  WindowEvents& events;
  WindowPeer* parent;  // null for a top-level window
  DWORD style;         // of the window and of its class
};

// The events must outlive the peer.
class ControlPeers {
 public:
  virtual ~ControlPeers() = default;

  virtual std::unique_ptr<StaticPeer> MakeStatic(const PeerOrigin& origin,
                                                 StaticEvents& events) = 0;
  // `sameGroup` is an earlier button of the same group, if this is a radio button that does not
  // start one; else null.
  virtual std::unique_ptr<ButtonPeer> MakeButton(const PeerOrigin& origin, ButtonEvents& events,
                                                 ButtonPeer* sameGroup) = 0;
  virtual std::unique_ptr<EditPeer> MakeEdit(const PeerOrigin& origin, EditEvents& events) = 0;
  virtual std::unique_ptr<ComboBoxPeer> MakeComboBox(const PeerOrigin& origin,
                                                     ComboBoxEvents& events) = 0;
  virtual std::unique_ptr<TabPeer> MakeTab(const PeerOrigin& origin, TabEvents& events) = 0;
  // The content must outlive the peer.
  virtual std::unique_ptr<ListViewPeer> MakeListView(const PeerOrigin& origin,
                                                     const ListViewContent& content,
                                                     ListViewEvents& events) = 0;
  virtual std::unique_ptr<UpDownPeer> MakeUpDown(const PeerOrigin& origin,
                                                 UpDownEvents& events) = 0;
  virtual std::unique_ptr<DatePickerPeer> MakeDatePicker(const PeerOrigin& origin,
                                                         DatePickerEvents& events) = 0;
  virtual std::unique_ptr<ToolTipPeer> MakeToolTip(const PeerOrigin& origin) = 0;
};

// Implemented by the desktop module.
class ControlSide {
 public:
  virtual ~ControlSide() = default;
  virtual ControlPeers& Controls() = 0;
};

}  // namespace platform
