// What is done to the controls of a dialog by their numbers.
#include <windows.h>

#include <algorithm>

#include "platform/user/window_list.h"

using namespace platform;

HWND WINAPI GetDlgItem(HWND dialog, int id) {
  if (FindWindowOf(dialog) == nullptr) return nullptr;
  for (const auto& child : Windows().ChildrenOf(dialog)) {
    if (static_cast<int>(child->id) == id) return child->handle;
  }
  ::SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
  return nullptr;
}

int WINAPI GetDlgCtrlID(HWND window) {
  const auto found = FindWindowOf(window);
  return found != nullptr ? static_cast<int>(found->id) : 0;
}

BOOL WINAPI SetDlgItemTextW(HWND dialog, int id, LPCWSTR text) {
  const HWND control = ::GetDlgItem(dialog, id);
  return control != nullptr ? ::SetWindowTextW(control, text) : FALSE;
}

UINT WINAPI GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int characters) {
  const HWND control = ::GetDlgItem(dialog, id);
  if (control != nullptr) return static_cast<UINT>(::GetWindowTextW(control, text, characters));
  if (text != nullptr && characters > 0) *text = L'\0';
  return 0;
}

LRESULT WINAPI SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam,
                                   LPARAM lParam) {
  const HWND control = ::GetDlgItem(dialog, id);
  return control != nullptr ? ::SendMessageW(control, message, wParam, lParam) : 0;
}

BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT check) {
  const HWND button = ::GetDlgItem(dialog, id);
  if (button == nullptr) return FALSE;
  ::SendMessageW(button, BM_SETCHECK, check, 0);
  return TRUE;
}

BOOL WINAPI CheckRadioButton(HWND dialog, int firstId, int lastId, int checkedId) {
  if (FindWindowOf(dialog) == nullptr) return FALSE;
  for (const auto& child : Windows().ChildrenOf(dialog)) {
    const auto id = static_cast<int>(child->id);
    if (id < std::min(firstId, lastId) || id > std::max(firstId, lastId)) continue;
    const LRESULT code = ::SendMessageW(child->handle, WM_GETDLGCODE, 0, 0);
    if ((code & DLGC_RADIOBUTTON) == 0) continue;
    ::SendMessageW(child->handle, BM_SETCHECK, id == checkedId ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  return TRUE;
}

UINT WINAPI IsDlgButtonChecked(HWND dialog, int id) {
  return static_cast<UINT>(::SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0));
}
