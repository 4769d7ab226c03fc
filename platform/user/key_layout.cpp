#include "platform/user/key_layout.h"

#include <algorithm>

#include "platform/user/us_keyboard.h"

namespace platform {
namespace {

const UsKey* FindUsKey(UINT virtualKey) {
  const auto* found =
      std::ranges::find(kUsKeyboard, static_cast<int>(virtualKey), &UsKey::virtualKey);
  return found != kUsKeyboard.end() ? found : nullptr;
}

// The character of keys that produce the same one on every layout; 0 for all other keys.
wchar_t FixedCharacter(UINT virtualKey) {
  switch (virtualKey) {
    case VK_BACK:
    case VK_TAB:
    case VK_RETURN:
    case VK_ESCAPE:
      return static_cast<wchar_t>(virtualKey);
    default:
      return 0;
  }
}

// Ctrl+A to Ctrl+Z are 1 to 26.
std::wstring ControlCharacter(UINT virtualKey) {
  const bool isLetter = virtualKey >= 'A' && virtualKey <= 'Z';
  return isLetter ? std::wstring(1, static_cast<wchar_t>(virtualKey - 'A' + 1)) : std::wstring();
}

}  // namespace

void KeyLayout::Learn(UINT virtualKey, const ShiftKeys& with, const std::wstring& text) {
  const bool isFixed = FixedCharacter(virtualKey) != 0 || with.MakesControlCharacters();
  if (isFixed || FindUsKey(virtualKey) == nullptr) return;
  learnt_[{virtualKey, with}] = text;
}

std::wstring KeyLayout::TextOf(UINT virtualKey, const ShiftKeys& with) const {
  if (with.MakesControlCharacters()) return ControlCharacter(virtualKey);
  if (const wchar_t fixed = FixedCharacter(virtualKey)) return std::wstring(1, fixed);
  const auto learnt = learnt_.find({virtualKey, with});
  if (learnt != learnt_.end()) return learnt->second;
  const UsKey* key = FindUsKey(virtualKey);
  if (key == nullptr || with.control) return {};
  return std::wstring(1, with.shift ? key->shifted : key->plain);
}

}  // namespace platform
