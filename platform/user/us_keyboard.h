// The letters, digits and punctuation keys of a US keyboard. The table supplies the virtual key of
// a scan code when the user's layout determines none, and the characters of a key until those of
// the user's layout are known. Plain data.
#pragma once

#include <windows.h>

#include <array>

namespace platform {

struct UsKey {
  UINT scanCode = 0;
  int virtualKey = 0;
  wchar_t plain = 0;
  wchar_t shifted = 0;
};

inline constexpr std::array kUsKeyboard = {
    UsKey{0x02, '1', L'1', L'!'},
    UsKey{0x03, '2', L'2', L'@'},
    UsKey{0x04, '3', L'3', L'#'},
    UsKey{0x05, '4', L'4', L'$'},
    UsKey{0x06, '5', L'5', L'%'},
    UsKey{0x07, '6', L'6', L'^'},
    UsKey{0x08, '7', L'7', L'&'},
    UsKey{0x09, '8', L'8', L'*'},
    UsKey{0x0A, '9', L'9', L'('},
    UsKey{0x0B, '0', L'0', L')'},
    UsKey{0x0C, VK_OEM_MINUS, L'-', L'_'},
    UsKey{0x0D, VK_OEM_PLUS, L'=', L'+'},
    UsKey{0x10, 'Q', L'q', L'Q'},
    UsKey{0x11, 'W', L'w', L'W'},
    UsKey{0x12, 'E', L'e', L'E'},
    UsKey{0x13, 'R', L'r', L'R'},
    UsKey{0x14, 'T', L't', L'T'},
    UsKey{0x15, 'Y', L'y', L'Y'},
    UsKey{0x16, 'U', L'u', L'U'},
    UsKey{0x17, 'I', L'i', L'I'},
    UsKey{0x18, 'O', L'o', L'O'},
    UsKey{0x19, 'P', L'p', L'P'},
    UsKey{0x1A, VK_OEM_4, L'[', L'{'},
    UsKey{0x1B, VK_OEM_6, L']', L'}'},
    UsKey{0x1E, 'A', L'a', L'A'},
    UsKey{0x1F, 'S', L's', L'S'},
    UsKey{0x20, 'D', L'd', L'D'},
    UsKey{0x21, 'F', L'f', L'F'},
    UsKey{0x22, 'G', L'g', L'G'},
    UsKey{0x23, 'H', L'h', L'H'},
    UsKey{0x24, 'J', L'j', L'J'},
    UsKey{0x25, 'K', L'k', L'K'},
    UsKey{0x26, 'L', L'l', L'L'},
    UsKey{0x27, VK_OEM_1, L';', L':'},
    UsKey{0x28, VK_OEM_7, L'\'', L'"'},
    UsKey{0x29, VK_OEM_3, L'`', L'~'},
    UsKey{0x2B, VK_OEM_5, L'\\', L'|'},
    UsKey{0x2C, 'Z', L'z', L'Z'},
    UsKey{0x2D, 'X', L'x', L'X'},
    UsKey{0x2E, 'C', L'c', L'C'},
    UsKey{0x2F, 'V', L'v', L'V'},
    UsKey{0x30, 'B', L'b', L'B'},
    UsKey{0x31, 'N', L'n', L'N'},
    UsKey{0x32, 'M', L'm', L'M'},
    UsKey{0x33, VK_OEM_COMMA, L',', L'<'},
    UsKey{0x34, VK_OEM_PERIOD, L'.', L'>'},
    UsKey{0x35, VK_OEM_2, L'/', L'?'},
    UsKey{0x39, VK_SPACE, L' ', L' '},
    UsKey{0x56, VK_OEM_102, L'\\', L'|'},
    // The numeric keypad, which Shift does not change.
    UsKey{0x52, VK_NUMPAD0, L'0', L'0'},
    UsKey{0x4F, VK_NUMPAD1, L'1', L'1'},
    UsKey{0x50, VK_NUMPAD2, L'2', L'2'},
    UsKey{0x51, VK_NUMPAD3, L'3', L'3'},
    UsKey{0x4B, VK_NUMPAD4, L'4', L'4'},
    UsKey{0x4C, VK_NUMPAD5, L'5', L'5'},
    UsKey{0x4D, VK_NUMPAD6, L'6', L'6'},
    UsKey{0x47, VK_NUMPAD7, L'7', L'7'},
    UsKey{0x48, VK_NUMPAD8, L'8', L'8'},
    UsKey{0x49, VK_NUMPAD9, L'9', L'9'},
    UsKey{0x37, VK_MULTIPLY, L'*', L'*'},
    UsKey{0x4E, VK_ADD, L'+', L'+'},
    UsKey{0x4A, VK_SUBTRACT, L'-', L'-'},
    UsKey{0x53, VK_DECIMAL, L'.', L'.'},
    UsKey{0x35 | KF_EXTENDED, VK_DIVIDE, L'/', L'/'},
};

}  // namespace platform
