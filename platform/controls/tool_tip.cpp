#include "platform/controls/tool_tip.h"

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kStyles = TTS_ALWAYSTIP | TTS_NOPREFIX | TTS_BALLOON;
constexpr DWORD kOwnStyles = 0xFFFF;
constexpr UINT kLastMessage = WM_USER + 99;

}  // namespace

std::unique_ptr<WindowPeer> ToolTip::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeToolTip(Origin(parent));
}

std::optional<LRESULT> ToolTip::Answer(UINT message, WPARAM /*wParam*/, LPARAM lParam) {
  const auto* tool = reinterpret_cast<const TOOLINFOW*>(lParam);
  switch (message) {
    case WM_NCCREATE:
      if ((Self().Style() & kOwnStyles & ~kStyles) == 0) return std::nullopt;
      LogLine("tool tip: this style is not supported");
      return FALSE;
    case TTM_ADDTOOLW:
      return AddTool(tool);
    case TTM_DELTOOLW:
      if (Peer() != nullptr && tool != nullptr) Peer()->RemoveTool(tool->uId);
      return 0;
    // The desktop breaks long texts by itself. No width was set before.
    case TTM_SETMAXTIPWIDTH:
      return -1;
    default:
      if (message < WM_USER || message > kLastMessage) return std::nullopt;
      return Refuse("tool tip", message, 0);
  }
}

LRESULT ToolTip::AddTool(const TOOLINFOW* tool) const {
  const bool isSupported = tool != nullptr && tool->cbSize == TTTOOLINFOW_V1_SIZE &&
                           tool->uFlags == TTF_SUBCLASS && tool->lpszText != nullptr;
  if (!isSupported) return Refuse("tool tip", TTM_ADDTOOLW, FALSE);
  const auto window = FindWindowOf(tool->hwnd);
  if (window == nullptr || !window->BelongsToCaller()) return FALSE;
  if (Peer() == nullptr || window->Peer() == nullptr) return TRUE;
  Peer()->AddTool(*window->Peer(), tool->uId, tool->rect, tool->lpszText);
  return TRUE;
}

}  // namespace platform
