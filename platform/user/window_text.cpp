// The text of a window, which the window procedure keeps.
#include "platform/kernel/api_result.h"
#include "platform/user/window.h"

using namespace platform;

BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text) try {
  if (FindWindowOf(window) == nullptr) return FALSE;
  const LPCWSTR given = text != nullptr ? text : L"";
  return ::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(given)) > 0 ? TRUE : FALSE;
} catch (...) {
  return FailedCall(FALSE);
}

int WINAPI GetWindowTextW(HWND window, LPWSTR text, int capacity) try {
  if (FindWindowOf(window) == nullptr) return 0;
  if (text == nullptr || capacity <= 0) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  // In case the procedure returns without writing.
  *text = L'\0';
  return static_cast<int>(::SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(capacity),
                                         reinterpret_cast<LPARAM>(text)));
} catch (...) {
  return FailedCall(0);
}

int WINAPI GetWindowTextLengthW(HWND window) try {
  if (FindWindowOf(window) == nullptr) return 0;
  return static_cast<int>(::SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
} catch (...) {
  return FailedCall(0);
}
