// Opening and ending dialogs.
#include "platform/dialog/dialog_creation.h"
#include "platform/dialog/dialog_resource.h"
#include "platform/dialog/modal_dialog.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/modal_loop.h"

namespace platform {
namespace {

constexpr INT_PTR kFailed = -1;
// A dialog that nobody has ended yet has this result.
constexpr INT_PTR kUnended = IDOK;

INT_PTR RunDialog(const DialogTemplate& made, DialogOrigin origin) {
  DisabledOwner owner(origin.owner);
  origin.owner = owner.Get();
  const HWND dialog = CreateDialogFrom(made, origin);
  return dialog != nullptr ? AwaitEnd(dialog, owner, kUnended) : kFailed;
}

}  // namespace
}  // namespace platform

using namespace platform;

INT_PTR WINAPI DialogBoxParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter) try {
  // Zero, not minus one, for an owner that is none, as documented.
  if (owner != nullptr && FindWindowOf(owner) == nullptr) return 0;
  const auto made = FindDialogTemplate(instance, templateName);
  if (!made.has_value()) return kFailed;
  INT_PTR result = kFailed;
  DWORD error = ERROR_SUCCESS;
  const bool ran = RunOnWindowThread([&] {
    result = RunDialog(*made, {instance, owner, procedure, parameter, true});
    error = ::GetLastError();
  });
  if (!ran) {
    LogLine("DialogBoxParamW: there is no desktop to show a dialog on");
    error = ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION;
  }
  if (result == kFailed) ::SetLastError(error);
  return result;
} catch (...) {
  return FailedCall(-1);
}

HWND WINAPI CreateDialogParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter) try {
  const auto made = FindDialogTemplate(instance, templateName);
  if (!made.has_value()) return nullptr;
  return CreateDialogFrom(*made, {instance, owner, procedure, parameter, false});
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

// The dialog's loop destroys it; until then it is only hidden.
BOOL WINAPI EndDialog(HWND dialog, INT_PTR result) try {
  const FoundDialog found = FindDialog(dialog);
  if (found.control == nullptr) return FALSE;
  found.control->Outcome()->ended = true;
  found.control->Outcome()->result = result;
  ::ShowWindow(dialog, SW_HIDE);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}
