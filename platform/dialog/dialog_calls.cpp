// Opening and ending modal dialogs, and creating modeless ones.
#include "platform/dialog/dialog_creation.h"
#include "platform/dialog/dialog_resource.h"
#include "platform/dialog/modal_dialog.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"
#include "platform/user/modal_loop.h"

namespace platform {
namespace {

constexpr INT_PTR kFailed = -1;
// The result of a dialog that WM_QUIT closed before EndDialog was called.
constexpr INT_PTR kUnended = IDOK;

INT_PTR RunDialog(const DialogTemplate& dialogTemplate, DialogOrigin origin) {
  DisabledOwner owner(origin.owner);
  origin.owner = owner.Get();
  const HWND dialog = CreateDialogFrom(dialogTemplate, origin);
  return dialog != nullptr ? AwaitEnd(dialog, owner, kUnended) : kFailed;
}

}  // namespace
}  // namespace platform

using namespace platform;

INT_PTR WINAPI DialogBoxParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner,
                               DLGPROC procedure, LPARAM parameter) try {
  // An invalid owner yields zero, not -1, as documented.
  if (owner != nullptr && FindWindowOf(owner) == nullptr) return 0;
  const auto dialogTemplate = FindDialogTemplate(instance, templateName);
  if (!dialogTemplate.has_value()) return kFailed;
  INT_PTR result = kFailed;
  DWORD error = ERROR_SUCCESS;
  const bool ran = RunOnWindowThread([&] {
    result = RunDialog(*dialogTemplate, {instance, owner, procedure, parameter, true});
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
  const auto dialogTemplate = FindDialogTemplate(instance, templateName);
  if (!dialogTemplate.has_value()) return nullptr;
  return CreateDialogFrom(*dialogTemplate, {instance, owner, procedure, parameter, false});
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

BOOL WINAPI MapDialogRect(HWND dialog, LPRECT rect) try {
  const FoundDialog found = FindDialog(dialog);
  if (found.control == nullptr) return FALSE;
  if (rect == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  *rect = found.control->Units().Pixels(*rect);
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

// Only hides the dialog; its modal loop destroys it.
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
