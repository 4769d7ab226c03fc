// The help viewer as Qt widgets: a window with buttons above, contents and search on the left and
// the topic on the right (qt_help_viewer.cpp), and popups that look like tool tips
// (qt_help_popup.cpp). Lives on the window thread.
#pragma once

#include "platform/shell/help_peers.h"

namespace platform {

class QtHelp final : public HelpPeers {
 public:
  std::unique_ptr<HelpViewerPeer> MakeViewer(WindowEvents& events, HelpEvents& helpEvents) override;
  std::unique_ptr<HelpPopupPeer> MakePopup(WindowEvents& events) override;
};

}  // namespace platform
