#include "platform/user/keyboard.h"

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/user/desktop.h"
#include "platform/user/key_layout.h"
#include "platform/user/modal_loop.h"

namespace platform {
namespace {

constexpr BYTE kDown = 0x80;
constexpr BYTE kToggled = 0x01;
constexpr UINT kReleased = 0x8000;  // in the scan code of ToAscii

struct KeyboardRecord {
  KeySet down;
  KeyLayout layout;
};
thread_local KeyboardRecord record;

SHORT StateOf(const KeySet& keys, int virtualKey) {
  const auto index = static_cast<std::size_t>(virtualKey);
  const bool isDown = index < keys.size() && keys[index];
  return isDown ? static_cast<SHORT>(0x8000) : SHORT{0};
}

ShiftKeys ShiftsOf(const KeySet& keys) {
  return {keys[VK_SHIFT], keys[VK_CONTROL], keys[VK_MENU]};
}

// The modifiers in the caller's key state. Caps Lock inverts Shift, for letters only; other toggles
// are ignored.
ShiftKeys ShiftsOf(const BYTE* keys, UINT virtualKey) {
  const auto isDown = [keys](int key) { return (keys[key] & kDown) != 0; };
  const bool isLetter = virtualKey >= 'A' && virtualKey <= 'Z';
  const bool isReversed = isLetter && (keys[VK_CAPITAL] & kToggled) != 0;
  return {isDown(VK_SHIFT) != isReversed, isDown(VK_CONTROL), isDown(VK_MENU)};
}

}  // namespace

void NoteKeys(const InputMessage& input) {
  record.down = input.keys;
  const UINT message = input.message.message;
  if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN) {
    const auto virtualKey = static_cast<UINT>(input.message.wParam);
    record.layout.Learn(virtualKey, ShiftsOf(input.keys), input.text);
  }
}

std::wstring CharactersOf(UINT virtualKey) {
  return record.layout.TextOf(virtualKey, ShiftsOf(record.down));
}

}  // namespace platform

using namespace platform;

SHORT WINAPI GetKeyState(int virtualKey) try {
  return StateOf(record.down, virtualKey);
} catch (...) {
  return FailedCall(SHORT{0});
}

BOOL WINAPI GetKeyboardState(BYTE* keys) try {
  if (keys == nullptr) {
    ::SetLastError(ERROR_NOACCESS);
    return FALSE;
  }
  for (std::size_t key = 0; key < record.down.size(); ++key)
    keys[key] = record.down[key] ? kDown : BYTE{0};
  return TRUE;
} catch (...) {
  return FailedCall(FALSE);
}

SHORT WINAPI GetAsyncKeyState(int virtualKey) try {
  KeySet down;
  CallWindowThread([&] { down = Desktop().KeysDown(); });
  return StateOf(down, virtualKey);
} catch (...) {
  return FailedCall(SHORT{0});
}

int WINAPI ToAscii(UINT virtualKey, UINT scanCode, const BYTE* keys, WORD* characters,
                   UINT /*flags*/) try {
  if (characters == nullptr || (scanCode & kReleased) != 0) return 0;
  const ShiftKeys with = keys != nullptr ? ShiftsOf(keys, virtualKey) : ShiftKeys{};
  const std::string bytes = Utf8(record.layout.TextOf(virtualKey, with));
  if (bytes.empty() || bytes.size() > sizeof *characters) return 0;
  const auto byteAt = [&](std::size_t index) {
    return static_cast<WORD>(index < bytes.size() ? static_cast<BYTE>(bytes[index]) : 0);
  };
  *characters = static_cast<WORD>(byteAt(0) | (byteAt(1) << 8));
  return static_cast<int>(bytes.size());
} catch (...) {
  return FailedCall(0);
}
