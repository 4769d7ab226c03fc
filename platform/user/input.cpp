#include "platform/user/input.h"

#include "platform/user/cursor.h"
#include "platform/user/desktop.h"
#include "platform/user/keyboard.h"
#include "platform/user/window_bounds.h"
#include "platform/user/window_relations.h"
#include "platform/user/window_showing.h"

namespace platform {
namespace {

bool IsMouse(UINT message) {
  return message >= WM_MOUSEMOVE && message <= WM_MBUTTONDBLCLK;
}

UINT MessageFor(const Window& window, UINT message) {
  const bool isDoubleClick =
      message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDBLCLK || message == WM_MBUTTONDBLCLK;
  const bool wantsThem = (window.Class()->data.style & CS_DBLCLKS) != 0;
  constexpr UINT kFromDownToDoubleClick = WM_LBUTTONDBLCLK - WM_LBUTTONDOWN;
  return isDoubleClick && !wantsThem ? message - kFromDownToDoubleClick : message;
}

WPARAM MouseKeys(const KeySet& keys) {
  return (keys[VK_LBUTTON] ? MK_LBUTTON : 0u) | (keys[VK_RBUTTON] ? MK_RBUTTON : 0u) |
         (keys[VK_MBUTTON] ? MK_MBUTTON : 0u) | (keys[VK_SHIFT] ? MK_SHIFT : 0u) |
         (keys[VK_CONTROL] ? MK_CONTROL : 0u);
}

// With Alt, unless Ctrl makes another character of the key; Alt and F10 are for menus by
// themselves.
bool IsForSystem(int virtualKey, const KeySet& keys) {
  if (virtualKey == VK_MENU || virtualKey == VK_F10) return true;
  return keys[VK_MENU] && !keys[VK_CONTROL];
}

UINT KeyMessage(const KeyInput& input, const KeySet& keys) {
  if (IsForSystem(input.virtualKey, keys)) return input.isDown ? WM_SYSKEYDOWN : WM_SYSKEYUP;
  return input.isDown ? WM_KEYDOWN : WM_KEYUP;
}

// The documented bits: a repeat count of one, the scan code, and what was before.
LPARAM KeyParameter(const KeyInput& input, bool withAlt) {
  UINT high = input.scanCode;
  if (withAlt) high |= KF_ALTDOWN;
  if (input.isRepeat || !input.isDown) high |= KF_REPEAT;
  if (!input.isDown) high |= KF_UP;
  return static_cast<LPARAM>(static_cast<INT>((high << 16) | 1u));
}

}  // namespace

void QueueMouse(const Window& window, const MouseInput& input) {
  auto target = Resolve<Window>(HandleKind::kWindow, window.Handle());
  POINT place = input.place;
  while (target != nullptr && !IsEnabledWithParents(*target)) {
    place = {place.x + target->Bounds().left, place.y + target->Bounds().top};
    target = target->IsChild() ? ParentOf(*target) : nullptr;
  }
  // The system's dialogs have no use for it.
  if (target == nullptr || target->SystemControl() != nullptr) return;
  const RECT origin = ScreenBoundsOf(*target);
  InputMessage queued;
  queued.keys = Desktop().KeysDown();
  queued.message.hwnd = target->Handle();
  queued.message.message = MessageFor(*target, input.message);
  queued.message.wParam = MouseKeys(queued.keys);
  queued.message.lParam = MAKELPARAM(place.x, place.y);
  queued.message.pt = {place.x + origin.left, place.y + origin.top};
  target->Queue()->PostInput(std::move(queued));
}

void QueueKey(const Window& window, const KeyInput& input) {
  InputMessage queued;
  queued.keys = Desktop().KeysDown();
  queued.text = input.text;
  queued.message.hwnd = window.Handle();
  queued.message.message = KeyMessage(input, queued.keys);
  queued.message.wParam = static_cast<WPARAM>(input.virtualKey);
  queued.message.lParam = KeyParameter(input, queued.keys[VK_MENU]);
  queued.message.pt = Desktop().Windows().CursorPosition();
  window.Queue()->PostInput(std::move(queued));
}

bool AcceptInput(const InputMessage& input) {
  const MSG& message = input.message;
  NoteKeys(input);
  if (IsMouse(message.message)) AskForCursor(message.hwnd, message.message);
  const auto window = Resolve<Window>(HandleKind::kWindow, message.hwnd);
  return window != nullptr && IsEnabledWithParents(*window);
}

}  // namespace platform
