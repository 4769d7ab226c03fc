// DefWindowProcW: handles the messages that a window procedure leaves to the system.
#include <windowsx.h>

#include <algorithm>

#include "platform/kernel/api_result.h"
#include "platform/user/context_help.h"
#include "platform/user/menu_tracking.h"
#include "platform/user/painting.h"
#include "platform/user/window.h"
#include "platform/user/window_relations.h"

namespace platform {
namespace {

constexpr LPARAM kByKeyboard = -1;  // the place of WM_CONTEXTMENU then

LRESULT SetText(Window& window, LPARAM lParam) {
  const auto* text = reinterpret_cast<const wchar_t*>(lParam);
  window.SetText(text != nullptr ? text : L"");
  return TRUE;
}

// Returns the number of characters written, without the terminating null.
LRESULT GetText(const Window& window, WPARAM capacity, LPARAM lParam) {
  auto* text = reinterpret_cast<wchar_t*>(lParam);
  if (capacity == 0 || text == nullptr) return 0;
  const std::size_t length = std::min<std::size_t>(window.Text().size(), capacity - 1);
  std::copy_n(window.Text().data(), length, text);
  text[length] = L'\0';
  return static_cast<LRESULT>(length);
}

void PaintNothing(HWND window) {
  PAINTSTRUCT paint;
  if (::BeginPaint(window, &paint) != nullptr) ::EndPaint(window, &paint);
}

LRESULT PassToParent(const Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto parent = ParentOf(window);
  return parent != nullptr ? ::SendMessageW(parent->Handle(), message, wParam, lParam) : 0;
}

void AskForContextMenu(HWND window, LPARAM place) {
  ::SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), place);
}

void AskForContextMenuAtMouse(HWND window, LPARAM lParam) {
  POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ::ClientToScreen(window, &place);
  AskForContextMenu(window, MAKELPARAM(place.x, place.y));
}

// The windows around it come first: they may set a cursor for the windows inside them.
bool SetClassCursor(const Window& window, WPARAM wParam, LPARAM lParam) {
  if (window.IsChild() && PassToParent(window, WM_SETCURSOR, wParam, lParam) != FALSE) return true;
  const bool isInThisWindow = reinterpret_cast<HWND>(wParam) == window.Handle();
  const HCURSOR cursor = window.Class()->data.hCursor;
  if (!isInThisWindow || cursor == nullptr) return false;
  ::SetCursor(cursor);
  return true;
}

}  // namespace
}  // namespace platform

using namespace platform;

LRESULT WINAPI DefWindowProcW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) try {
  const auto found = FindWindowOf(window);
  if (found == nullptr) return 0;
  switch (message) {
    case WM_NCCREATE:        // creation goes on
    case WM_POWERBROADCAST:  // a suspension is allowed
      return TRUE;
    case WM_CLOSE:
      ::DestroyWindow(window);
      return 0;
    case WM_CANCELMODE:
      CancelMenuOf(window);
      return 0;
    case WM_SETTEXT:
      return SetText(*found, lParam);
    case WM_GETTEXT:
      return GetText(*found, wParam, lParam);
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(found->Text().size());
    case WM_SETFONT:
      found->SetFont(reinterpret_cast<HFONT>(wParam));
      return 0;
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(found->FontHandle());
    case WM_PAINT:
      PaintNothing(window);
      return 0;
    case WM_ERASEBKGND:
      return EraseBackground(*found, reinterpret_cast<HDC>(wParam)) ? TRUE : FALSE;
    case WM_KEYDOWN:
      if (wParam == VK_F1) AskForHelp(*found);
      return 0;
    case WM_KEYUP:
      if (wParam == VK_APPS) AskForContextMenu(window, kByKeyboard);
      return 0;
    case WM_SYSKEYDOWN:
      if (wParam == VK_F10 && ::GetKeyState(VK_SHIFT) < 0) AskForContextMenu(window, kByKeyboard);
      return 0;
    case WM_RBUTTONUP:
      AskForContextMenuAtMouse(window, lParam);
      return 0;
    case WM_CONTEXTMENU:
      return found->IsChild() ? PassToParent(*found, message, wParam, lParam) : 0;
    case WM_SETCURSOR:
      return SetClassCursor(*found, wParam, lParam) ? TRUE : FALSE;
    case WM_HELP:
      return PassToParent(*found, message, wParam, lParam);
    default:
      return 0;
  }
} catch (...) {
  return FailedCall(LRESULT{0});
}
