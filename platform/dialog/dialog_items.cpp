// The controls of a dialog and their identifiers.
#include <windows.h>

#include "platform/kernel/api_result.h"
#include "platform/user/window_list.h"

using namespace platform;

HWND WINAPI GetDlgItem(HWND dialog, int id) try {
  if (FindWindowOf(dialog) == nullptr) return nullptr;
  for (const auto& child : Windows().ChildrenOf(dialog)) {
    if (static_cast<int>(child->Id()) == id) return child->Handle();
  }
  ::SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
  return nullptr;
} catch (...) {
  return FailedCall<HWND>(nullptr);
}

int WINAPI GetDlgCtrlID(HWND window) try {
  const auto found = FindWindowOf(window);
  return found != nullptr ? static_cast<int>(found->Id()) : 0;
} catch (...) {
  return FailedCall(0);
}
