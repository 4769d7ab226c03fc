// Windows as Qt widgets. Lives on the window thread.
#pragma once

#include "platform/user/window_peer.h"

namespace platform {

class QtWindowPeers final : public WindowPeers {
 public:
  std::unique_ptr<WindowPeer> MakeTopLevel(WindowEvents& events, WindowPeer* owner) override;
  std::unique_ptr<WindowPeer> MakeChild(WindowEvents& events, WindowPeer& parent) override;
  std::unique_ptr<WindowPeer> MakePage(WindowEvents& events, WindowPeer& parent) override;
  POINT CursorPosition() override;
  SIZE ScreenSize() override;
  RECT WorkArea(POINT position) override;
};

}  // namespace platform
