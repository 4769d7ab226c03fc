#include "platform/qt/qt_virtual_keys.h"

#include <algorithm>
#include <array>

#include "platform/user/us_keyboard.h"

namespace platform {
namespace {

struct NamedKey {
  int key;
  int virtualKey;
  UINT scanCode;
};

constexpr std::array kNamedKeys = {
    NamedKey{Qt::Key_Escape, VK_ESCAPE, 0x01},
    NamedKey{Qt::Key_Backspace, VK_BACK, 0x0E},
    NamedKey{Qt::Key_Tab, VK_TAB, 0x0F},
    NamedKey{Qt::Key_Backtab, VK_TAB, 0x0F},
    NamedKey{Qt::Key_Return, VK_RETURN, 0x1C},
    NamedKey{Qt::Key_Enter, VK_RETURN, 0x1C | KF_EXTENDED},
    NamedKey{Qt::Key_Control, VK_CONTROL, 0x1D},
    NamedKey{Qt::Key_Shift, VK_SHIFT, 0x2A},
    NamedKey{Qt::Key_Alt, VK_MENU, 0x38},
    NamedKey{Qt::Key_AltGr, VK_MENU, 0x38 | KF_EXTENDED},
    NamedKey{Qt::Key_Space, VK_SPACE, 0x39},
    NamedKey{Qt::Key_CapsLock, VK_CAPITAL, 0x3A},
    NamedKey{Qt::Key_F11, VK_F11, 0x57},
    NamedKey{Qt::Key_F12, VK_F12, 0x58},
    NamedKey{Qt::Key_F24, VK_F24, 0x76},
    NamedKey{Qt::Key_NumLock, VK_NUMLOCK, 0x45 | KF_EXTENDED},
    NamedKey{Qt::Key_Pause, VK_PAUSE, 0x45},
    NamedKey{Qt::Key_ScrollLock, VK_SCROLL, 0x46},
    NamedKey{Qt::Key_Print, VK_SNAPSHOT, 0x37 | KF_EXTENDED},
    NamedKey{Qt::Key_Home, VK_HOME, 0x47 | KF_EXTENDED},
    NamedKey{Qt::Key_Up, VK_UP, 0x48 | KF_EXTENDED},
    NamedKey{Qt::Key_PageUp, VK_PRIOR, 0x49 | KF_EXTENDED},
    NamedKey{Qt::Key_Left, VK_LEFT, 0x4B | KF_EXTENDED},
    NamedKey{Qt::Key_Clear, VK_CLEAR, 0x4C},
    NamedKey{Qt::Key_Right, VK_RIGHT, 0x4D | KF_EXTENDED},
    NamedKey{Qt::Key_End, VK_END, 0x4F | KF_EXTENDED},
    NamedKey{Qt::Key_Down, VK_DOWN, 0x50 | KF_EXTENDED},
    NamedKey{Qt::Key_PageDown, VK_NEXT, 0x51 | KF_EXTENDED},
    NamedKey{Qt::Key_Insert, VK_INSERT, 0x52 | KF_EXTENDED},
    NamedKey{Qt::Key_Delete, VK_DELETE, 0x53 | KF_EXTENDED},
    NamedKey{Qt::Key_Super_L, VK_LWIN, 0x5B | KF_EXTENDED},
    NamedKey{Qt::Key_Super_R, VK_RWIN, 0x5C | KF_EXTENDED},
    NamedKey{Qt::Key_Menu, VK_APPS, 0x5D | KF_EXTENDED},
};

// Letters of layouts with more letters than the US one, by their usual position.
struct PositionedLetter {
  int key;
  UINT scanCode;
};
constexpr std::array kPositionedLetters = {
    PositionedLetter{Qt::Key_Aring, 0x1A},
    PositionedLetter{Qt::Key_Odiaeresis, 0x27},
    PositionedLetter{Qt::Key_Adiaeresis, 0x28},
};

VirtualKey FunctionKey(int key) {
  const int number = key - Qt::Key_F1;
  const int code = VK_F1 + number;
  if (number < 10) return {code, static_cast<UINT>(0x3B + number)};
  return {code, static_cast<UINT>(0x64 + number - 12)};
}

VirtualKey ByName(const QKeyEvent& event) {
  const auto* found = std::ranges::find(kNamedKeys, event.key(), &NamedKey::key);
  if (found != kNamedKeys.end()) {
    // Keys of the keypad are not extended, except Enter.
    const bool isOnKeypad = (event.modifiers() & Qt::KeypadModifier) != 0;
    const bool staysExtended = !isOnKeypad || event.key() == Qt::Key_Enter;
    return {found->virtualKey,
            staysExtended ? found->scanCode : found->scanCode & ~UINT{KF_EXTENDED}};
  }
  const bool isFunctionKey = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F24;
  return isFunctionKey ? FunctionKey(event.key()) : VirtualKey{};
}

VirtualKey OfUsKey(const UsKey* key) {
  return key != kUsKeyboard.end() ? VirtualKey{key->virtualKey, key->scanCode} : VirtualKey{};
}

VirtualKey ByVirtualKey(int code) {
  return OfUsKey(std::ranges::find(kUsKeyboard, code, &UsKey::virtualKey));
}

VirtualKey ByScanCode(UINT scanCode) {
  return OfUsKey(std::ranges::find(kUsKeyboard, scanCode, &UsKey::scanCode));
}

VirtualKey OnKeypad(int key) {
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return ByVirtualKey(VK_NUMPAD0 + key - Qt::Key_0);
  switch (key) {
    case Qt::Key_Asterisk:
      return ByVirtualKey(VK_MULTIPLY);
    case Qt::Key_Plus:
      return ByVirtualKey(VK_ADD);
    case Qt::Key_Minus:
      return ByVirtualKey(VK_SUBTRACT);
    case Qt::Key_Period:
    case Qt::Key_Comma:
      return ByVirtualKey(VK_DECIMAL);
    case Qt::Key_Slash:
      return ByVirtualKey(VK_DIVIDE);
    default:
      return {};
  }
}

// Display servers number keys as the kernel does, plus 8. In the main block the kernel's numbers
// are the scan codes. Returns 0 when unknown.
UINT ScanCodeOf(const QKeyEvent& event) {
  constexpr quint32 kFirst = 8;
  constexpr UINT kLast = 0x58;
  const quint32 native = event.nativeScanCode();
  return native > kFirst && native - kFirst <= kLast ? native - kFirst : 0;
}

// For events without a scan code: the key that has the character on a US keyboard.
VirtualKey ByCharacter(int key) {
  const auto* letter = std::ranges::find(kPositionedLetters, key, &PositionedLetter::key);
  if (letter != kPositionedLetters.end()) return ByScanCode(letter->scanCode);
  return OfUsKey(std::ranges::find_if(kUsKeyboard, [key](const UsKey& each) {
    return static_cast<int>(each.plain) == key || static_cast<int>(each.shifted) == key;
  }));
}

}  // namespace

VirtualKey VirtualKeyOf(const QKeyEvent& event) {
  if (const VirtualKey named = ByName(event); named.code != 0) return named;
  if ((event.modifiers() & Qt::KeypadModifier) != 0) return OnKeypad(event.key());
  const UINT scanCode = ScanCodeOf(event);
  // A letter is the virtual key of that name, wherever the layout has it.
  if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) {
    const VirtualKey letter = ByVirtualKey(event.key());
    return {letter.code, scanCode != 0 ? scanCode : letter.scanCode};
  }
  const VirtualKey byPosition = scanCode != 0 ? ByScanCode(scanCode) : VirtualKey{};
  return byPosition.code != 0 ? byPosition : ByCharacter(event.key());
}

}  // namespace platform
