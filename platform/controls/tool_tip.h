// "tooltips_class32": texts that appear over areas of other windows. Owned by its window, on the
// window thread.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "platform/controls/basic_control.h"

namespace platform {

class ToolTip final : public BasicControl {
 public:
  explicit ToolTip(Window& window) : BasicControl(window) {}

  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  ToolTipPeer* Peer() const { return static_cast<ToolTipPeer*>(Self().Peer()); }
  LRESULT AddTool(const TOOLINFOW* tool) const;
};

}  // namespace platform
