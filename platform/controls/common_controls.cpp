// InitCommonControlsEx: the supported classes of common controls. They are always registered.
#include <windows.h>

#include <commctrl.h>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace {

// The classes of bars are accepted but do not exist: creating a window of one fails.
constexpr DWORD kSupportedClasses = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES |
                                    ICC_UPDOWN_CLASS | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;

}  // namespace

BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes) try {
  if (classes == nullptr || classes->dwSize != sizeof(INITCOMMONCONTROLSEX) ||
      classes->dwICC == 0) {
    return FALSE;
  }
  if ((classes->dwICC & ~kSupportedClasses) == 0) return TRUE;
  platform::LogLine("InitCommonControlsEx: these classes are not supported");
  return FALSE;
} catch (...) {
  return platform::FailedCall(FALSE);
}
