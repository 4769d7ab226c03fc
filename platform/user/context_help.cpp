#include "platform/user/context_help.h"

#include "platform/kernel/api_result.h"

namespace platform {

void AskForHelp(const Window& window) {
  HELPINFO help{};
  help.cbSize = sizeof help;
  help.iContextType = HELPINFO_WINDOW;
  help.iCtrlId = static_cast<int>(window.id);
  help.hItemHandle = window.handle;
  help.dwContextId = window.helpContext;
  ::GetCursorPos(&help.MousePos);
  ::SendMessageW(window.handle, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
}

void RequestHelp(const Window& window) {
  window.queue->Defer([handle = window.handle] {
    const auto found = Resolve<Window>(HandleKind::kWindow, handle);
    if (found != nullptr) AskForHelp(*found);
  });
}

}  // namespace platform

using namespace platform;

BOOL WINAPI SetWindowContextHelpId(HWND window, DWORD number) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  found->helpContext = number;
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
