// The toolkit's side of a tool tip control. For the window thread.
#pragma once

#include <string>

#include "platform/user/window_peer.h"

namespace platform {

class ToolTipPeer : public WindowPeer {
 public:
  // Shows the text while the pointer rests over the area, which is in the client area of the other
  // window, also over a disabled control there. The number is unique in this peer.
  virtual void AddTool(WindowPeer& window, UINT_PTR number, const RECT& area,
                       const std::wstring& text) = 0;
  virtual void RemoveTool(UINT_PTR number) = 0;
};

}  // namespace platform
