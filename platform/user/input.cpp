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
  const bool wantsDoubleClicks = (window.Class()->data.style & CS_DBLCLKS) != 0;
  constexpr UINT kFromDownToDoubleClick = WM_LBUTTONDBLCLK - WM_LBUTTONDOWN;
  return isDoubleClick && !wantsDoubleClicks ? message - kFromDownToDoubleClick : message;
}

WPARAM MouseKeys(const KeySet& keys) {
  return (keys[VK_LBUTTON] ? MK_LBUTTON : 0u) | (keys[VK_RBUTTON] ? MK_RBUTTON : 0u) |
         (keys[VK_MBUTTON] ? MK_MBUTTON : 0u) | (keys[VK_SHIFT] ? MK_SHIFT : 0u) |
         (keys[VK_CONTROL] ? MK_CONTROL : 0u);
}

// Keys pressed with Alt are system keys, unless Ctrl is down, too (AltGr). Alt and F10 themselves
// open menus.
bool IsForSystem(int virtualKey, const KeySet& keys) {
  if (virtualKey == VK_MENU || virtualKey == VK_F10) return true;
  return keys[VK_MENU] && !keys[VK_CONTROL];
}

UINT KeyMessage(const KeyInput& input, const KeySet& keys) {
  if (IsForSystem(input.virtualKey, keys)) return input.isDown ? WM_SYSKEYDOWN : WM_SYSKEYUP;
  return input.isDown ? WM_KEYDOWN : WM_KEYUP;
}

// The documented bits: a repeat count of one, the scan code, and the previous state of the key.
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
  POINT position = input.place;
  while (target != nullptr && !IsEnabledWithParents(*target)) {
    position = {position.x + target->Bounds().left, position.y + target->Bounds().top};
    target = target->IsChild() ? ParentOf(*target) : nullptr;
  }
  // Windows of system classes get no mouse messages.
  if (target == nullptr || target->SystemControl() != nullptr) return;
  const RECT origin = ScreenBoundsOf(*target);
  InputMessage queued;
  queued.keys = Desktop().KeysDown();
  queued.message.hwnd = target->Handle();
  queued.message.message = MessageFor(*target, input.message);
  queued.message.wParam = MouseKeys(queued.keys);
  queued.message.lParam = MAKELPARAM(position.x, position.y);
  queued.message.pt = {position.x + origin.left, position.y + origin.top};
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
