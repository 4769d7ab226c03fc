// Which families of common controls there are. Their classes are always registered.
#include <windows.h>

#include <commctrl.h>

#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace {

// Of the bars there is none; a window of their classes fails as one of an unknown class does.
constexpr DWORD kKnownClasses = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES |
                                ICC_UPDOWN_CLASS | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;

}  // namespace

BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes) try {
  if (classes == nullptr || classes->dwSize != sizeof(INITCOMMONCONTROLSEX) ||
      classes->dwICC == 0) {
    return FALSE;
  }
  if ((classes->dwICC & ~kKnownClasses) == 0) return TRUE;
  platform::LogLine("InitCommonControlsEx: these classes are not supported");
  return FALSE;
} catch (...) {
  return platform::FailedCall(FALSE);
}
