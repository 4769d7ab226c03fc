#include "platform/dialog/message_box.h"

#include <windows.h>

#include <mutex>

#include "platform/dialog/dialog_peers.h"
#include "platform/dialog/modal_dialog.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/seam.h"
#include "platform/user/desktop.h"
#include "platform/user/modal_loop.h"

namespace platform {
namespace {

Seam<MessageBoxResponder>& Responder() {
  static auto& seam = *new Seam<MessageBoxResponder>;
  return seam;
}

// For the window thread. When the owner is destroyed the box closes with result 0. WM_QUIT closes
// the box as it closes a dialog, whatever its buttons are.
int RunBox(HWND ownerHandle, MessageBoxView view) {
  DisabledOwner owner(ownerHandle);
  const auto ownerWindow = Resolve<Window>(HandleKind::kWindow, owner.Get());
  view.owner = ownerWindow != nullptr ? ownerWindow->Peer() : nullptr;
  const auto box = DesktopSide<DialogSide>().ShowMessageBox(view);
  const auto ownerIsGone = [&] { return ownerWindow != nullptr && !ownerWindow->IsLive(); };
  const LoopEnd end =
      RunModalLoop(*CurrentQueue(), [&] { return box->Answer().has_value() || ownerIsGone(); });
  owner.Enable();
  return end == LoopEnd::kQuit ? IDOK : box->Answer().value_or(0);
}

int FailWithoutDesktop(const MessageBoxRequest& request) {
  LogLine("message box: " + Utf8(request.caption) + ": " + Utf8(request.text));
  ::SetLastError(ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  return 0;
}

}  // namespace

void SetMessageBoxResponder(MessageBoxResponder responder) {
  Responder().Set(std::move(responder));
}

}  // namespace platform

using namespace platform;

int WINAPI MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) try {
  if (owner != nullptr && FindWindowOf(owner) == nullptr) return 0;
  // Without a caption "Error" is shown, as documented.
  const MessageBoxRequest request{owner, text != nullptr ? text : L"",
                                  caption != nullptr ? caption : L"Error", type};
  const auto view = ViewOf(request);
  if (!view.has_value()) {
    LogLine("MessageBoxW: unsupported type " + std::to_string(type));
    ::SetLastError(ERROR_INVALID_MSGBOX_STYLE);
    return 0;
  }
  if (const MessageBoxResponder responder = Responder().Get()) return responder(request);
  int result = 0;
  const bool ran = RunOnWindowThread([&] { result = RunBox(owner, *view); });
  return ran ? result : FailWithoutDesktop(request);
} catch (...) {
  return FailedCall(0);
}
