// GetWindowLongPtrW and SetWindowLongPtrW.
#include <utility>

#include "platform/kernel/api_result.h"
#include "platform/user/window.h"

namespace platform {
namespace {

// What only the functions made for it change.
DWORD LastingStyles(const Window& window) {
  constexpr DWORD kOfAll = WS_CHILD | WS_VISIBLE | WS_DISABLED;
  // Controls have bars of their own making.
  return window.control == nullptr ? kOfAll | WS_HSCROLL | WS_VSCROLL : kOfAll;
}

LONG_PTR SetStyle(const Window& window, DWORD& style, LONG_PTR value, int index) {
  const DWORD lasting = index == GWL_STYLE ? LastingStyles(window) : 0;
  const DWORD before = style;
  style = (before & lasting) | (static_cast<DWORD>(value) & ~lasting);
  STYLESTRUCT change = {before, style};
  window.CallProcedure(WM_STYLECHANGED, static_cast<WPARAM>(index),
                       reinterpret_cast<LPARAM>(&change));
  return static_cast<LONG>(before);
}

LONG_PTR* ExtraOf(const Window& window, int index) {
  return index >= 0 && window.control != nullptr ? window.control->Extra(index) : nullptr;
}

LONG_PTR Get(const Window& window, int index) {
  switch (index) {
    case GWL_STYLE:
      return static_cast<LONG>(window.style);
    case GWL_EXSTYLE:
      return static_cast<LONG>(window.exStyle);
    default:
      return static_cast<LONG_PTR>(window.id);
  }
}

LONG_PTR Set(Window& window, int index, LONG_PTR value) {
  switch (index) {
    case GWL_STYLE:
      return SetStyle(window, window.style, value, index);
    case GWL_EXSTYLE:
      return SetStyle(window, window.exStyle, value, index);
    default:
      break;
  }
  const auto before = static_cast<LONG_PTR>(window.id);
  window.id = static_cast<UINT_PTR>(value);
  if (window.peer != nullptr) window.peer->SetIdentity(window.handle, window.id);
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
  if (index == GWLP_USERDATA) return found->userData.load();
  if (index == GWLP_WNDPROC) return reinterpret_cast<LONG_PTR>(found->procedure.load());
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
  if (index == GWLP_USERDATA) return found->userData.exchange(value);
  if (index == GWLP_WNDPROC && value != 0) {
    return reinterpret_cast<LONG_PTR>(found->procedure.exchange(reinterpret_cast<WNDPROC>(value)));
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
