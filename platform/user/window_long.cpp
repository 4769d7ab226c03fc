// GetWindowLongPtrW and SetWindowLongPtrW.
#include <utility>

#include "platform/kernel/api_result.h"
#include "platform/user/window.h"

namespace platform {
namespace {

// The style bits that SetWindowLongPtrW leaves unchanged, since other functions change them.
DWORD LastingStyles(const Window& window) {
  constexpr DWORD kOfAll = WS_CHILD | WS_VISIBLE | WS_DISABLED;
  // Controls manage their scroll bars themselves.
  return window.SystemControl() == nullptr ? kOfAll | WS_HSCROLL | WS_VSCROLL : kOfAll;
}

LONG_PTR SetStyle(Window& window, LONG_PTR value, int index) {
  const bool isExtended = index == GWL_EXSTYLE;
  const DWORD lasting = isExtended ? 0 : LastingStyles(window);
  const DWORD before = isExtended ? window.ExStyle() : window.Style();
  const DWORD style = (before & lasting) | (static_cast<DWORD>(value) & ~lasting);
  isExtended ? window.SetExStyle(style) : window.SetStyle(style);
  STYLESTRUCT change = {before, style};
  window.CallProcedure(WM_STYLECHANGED, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(&change));
  return static_cast<LONG>(before);
}

LONG_PTR* ExtraOf(const Window& window, int index) {
  return index >= 0 && window.SystemControl() != nullptr ? window.SystemControl()->Extra(index)
                                                         : nullptr;
}

LONG_PTR Get(const Window& window, int index) {
  switch (index) {
    case GWL_STYLE:
      return static_cast<LONG>(window.Style());
    case GWL_EXSTYLE:
      return static_cast<LONG>(window.ExStyle());
    default:
      return static_cast<LONG_PTR>(window.Id());
  }
}

LONG_PTR Set(Window& window, int index, LONG_PTR value) {
  if (index == GWL_STYLE || index == GWL_EXSTYLE) return SetStyle(window, value, index);
  const auto before = static_cast<LONG_PTR>(window.Id());
  window.SetId(static_cast<UINT_PTR>(value));
  return before;
}

bool IsOfOwner(int index) {
  return index == GWL_STYLE || index == GWL_EXSTYLE || index == GWLP_ID;
}

}  // namespace
}  // namespace platform

using namespace platform;

LONG_PTR WINAPI GetWindowLongPtrW(HWND window, int index) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  if (index == GWLP_USERDATA) return found->UserData();
  if (index == GWLP_WNDPROC) return reinterpret_cast<LONG_PTR>(found->Procedure());
  if (const LONG_PTR* extra = ExtraOf(*found, index)) return *extra;
  LONG_PTR value = 0;
  if (IsOfOwner(index)) {
    RunOnOwner(found, [&] { value = Get(*found, index); });
  } else {
    ::SetLastError(ERROR_INVALID_INDEX);
  }
  return value;
} catch (...) {
  return FailedCall(LONG_PTR{0});
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND window, int index, LONG_PTR value) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  if (index == GWLP_USERDATA) return found->ExchangeUserData(value);
  if (index == GWLP_WNDPROC && value != 0) {
    return reinterpret_cast<LONG_PTR>(found->ExchangeProcedure(reinterpret_cast<WNDPROC>(value)));
  }
  if (LONG_PTR* extra = ExtraOf(*found, index)) return std::exchange(*extra, value);
  LONG_PTR before = 0;
  if (IsOfOwner(index)) {
    RunOnOwner(found, [&] { before = Set(*found, index, value); });
  } else {
    ::SetLastError(index == GWLP_WNDPROC ? ERROR_INVALID_PARAMETER : ERROR_INVALID_INDEX);
  }
  return before;
} catch (...) {
  return FailedCall(LONG_PTR{0});
}
