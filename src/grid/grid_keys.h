// The virtual-key codes that the grid handles, as Win32 documents them, and characters that keys
// produce.
#pragma once

namespace quillgate {

enum GridKey : int {
  kKeyTab = 0x09,
  kKeyEnter = 0x0D,
  kKeyEscape = 0x1B,
  kKeyPageUp = 0x21,
  kKeyPageDown = 0x22,
  kKeyLeft = 0x25,
  kKeyUp = 0x26,
  kKeyRight = 0x27,
  kKeyDown = 0x28,
  kKeyDelete = 0x2E,
  kKeyF1 = 0x70,
  kKeyF12 = 0x7B
};

inline constexpr wchar_t kCharBackspace = 8;
inline constexpr wchar_t kCharEnter = 13;
// The first and last character that can be typed. The "~" that follows would make the cell a
// graphic.
inline constexpr wchar_t kFirstTyped = L' ';
inline constexpr wchar_t kLastTyped = L'}';

}  // namespace quillgate
