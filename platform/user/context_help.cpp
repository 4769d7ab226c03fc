#include "platform/user/context_help.h"

#include "platform/kernel/api_result.h"

namespace platform {

void AskForHelp(const Window& window) {
  HELPINFO help{};
  help.cbSize = sizeof help;
  help.iContextType = HELPINFO_WINDOW;
  help.iCtrlId = static_cast<int>(window.Id());
  help.hItemHandle = window.Handle();
  help.dwContextId = window.HelpContext();
  ::GetCursorPos(&help.MousePos);
  ::SendMessageW(window.Handle(), WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
}

void RequestHelp(const Window& window) {
  window.Queue()->Defer([handle = window.Handle()] {
    const auto found = Resolve<Window>(HandleKind::kWindow, handle);
    if (found != nullptr) AskForHelp(*found);
  });
}

}  // namespace platform

using namespace platform;

BOOL WINAPI SetWindowContextHelpId(HWND window, DWORD number) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return FALSE;
  found->SetHelpContext(number);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
