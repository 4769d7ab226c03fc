#include "platform/shell/help_popup.h"

#include "platform/user/desktop.h"

namespace platform {

std::unique_ptr<WindowPeer> HelpPopup::MakePeer(Window& window, WindowPeer* /*parent*/) {
  return DesktopSide<HelpSide>().Help().MakePopup(window.Events());
}

std::optional<LRESULT> HelpPopup::Answer(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  return std::nullopt;
}

std::unique_ptr<Control> MakeHelpPopup(Window& /*window*/) {
  return std::make_unique<HelpPopup>();
}

}  // namespace platform
