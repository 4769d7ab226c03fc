// "hh_popup": a popup with a text of the help. Owned by its window, on the window thread.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "platform/shell/help_peers.h"
#include "platform/user/control.h"
#include "platform/user/window.h"

namespace platform {

inline constexpr const wchar_t* kHelpPopupClass = L"hh_popup";

class HelpPopup final : public Control {
 public:
  std::unique_ptr<WindowPeer> MakePeer(Window& window, WindowPeer* parent) override;
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) override;
};

std::unique_ptr<Control> MakeHelpPopup(Window& window);

}  // namespace platform
