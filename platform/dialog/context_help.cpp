#include "platform/dialog/context_help.h"

namespace platform {
namespace {

void SendHelp(HWND handle) {
  const auto window = Resolve<Window>(HandleKind::kWindow, handle);
  if (window == nullptr) return;
  HELPINFO help{};
  help.cbSize = sizeof help;
  help.iContextType = HELPINFO_WINDOW;
  help.iCtrlId = static_cast<int>(window->id);
  help.hItemHandle = handle;
  help.dwContextId = window->helpContext;
  ::GetCursorPos(&help.MousePos);
  ::SendMessageW(handle, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
}

}  // namespace

void RequestHelp(const Window& window) {
  window.queue->Defer([handle = window.handle] { SendHelp(handle); });
}

}  // namespace platform

using namespace platform;

BOOL WINAPI SetWindowContextHelpId(HWND window, DWORD number) {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  found->helpContext = number;
  return TRUE;
}

DWORD WINAPI GetWindowContextHelpId(HWND window) {
  const auto found = FindWindowOf(window);
  return found != nullptr ? found->helpContext : 0;
}
