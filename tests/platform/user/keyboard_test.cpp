// What keys type as long as nothing is known of the user's layout, and what of the keyboard, the
// pointer and the speaker works without a desktop.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "platform/testing/simulated_machine.h"

namespace {

using Keys = std::array<BYTE, 256>;

Keys Down(std::initializer_list<int> keys) {
  Keys down{};
  for (const int key : keys)
    down.at(static_cast<std::size_t>(key)) = 0x80;
  return down;
}

// Minus one when nothing comes of it.
int Typed(UINT virtualKey, const Keys& keys, UINT scanCode = 0) {
  WORD character = 0;
  const int count = ::ToAscii(virtualKey, scanCode, keys.data(), &character, 0);
  return count == 1 ? character : -1;
}

struct Case {
  UINT virtualKey;
  Keys keys;
  int typed;
};

TEST(Keyboard, KeysTypeWhatAUsKeyboardTypes) {
  Keys capsLock{};
  capsLock[VK_CAPITAL] = 0x01;
  Keys capsLockAndShift = Down({VK_SHIFT});
  capsLockAndShift[VK_CAPITAL] = 0x01;
  const Case cases[] = {
      {'A', {}, 'a'},
      {'A', Down({VK_SHIFT}), 'A'},
      {'Z', capsLock, 'Z'},
      {'Z', capsLockAndShift, 'z'},
      {'5', {}, '5'},
      {'5', Down({VK_SHIFT}), '%'},
      {'5', capsLock, '5'},
      {VK_NUMPAD7, {}, '7'},
      {VK_DECIMAL, {}, '.'},
      {VK_DIVIDE, Down({VK_SHIFT}), '/'},
      {VK_OEM_3, Down({VK_SHIFT}), '~'},
      {VK_OEM_MINUS, {}, '-'},
      {VK_SPACE, {}, ' '},
      {VK_RETURN, {}, 13},
      {VK_RETURN, Down({VK_SHIFT}), 13},
      {VK_BACK, {}, 8},
      {VK_TAB, {}, 9},
      {VK_ESCAPE, {}, 27},
      {'A', Down({VK_CONTROL}), 1},
      {'Z', Down({VK_CONTROL, VK_SHIFT}), 26},
      {'5', Down({VK_CONTROL}), -1},
      {'A', Down({VK_CONTROL, VK_MENU}), -1},
      {VK_SHIFT, Down({VK_SHIFT}), -1},
      {VK_DELETE, {}, -1},
      {VK_LEFT, {}, -1},
      {VK_F5, {}, -1},
  };
  for (const Case& each : cases)
    EXPECT_EQ(Typed(each.virtualKey, each.keys), each.typed) << "key " << each.virtualKey;
}

TEST(Keyboard, AKeyThatGoesUpTypesNothing) {
  EXPECT_EQ(Typed('A', {}, 0x1E), 'a');
  EXPECT_EQ(Typed('A', {}, 0x801E), -1);
}

TEST(Keyboard, TranslationPostsACharacterForKeysThatTypeOne) {
  const platform::SimulatedMachine machine;
  const LPARAM parameter = 0x001E0001;
  const MSG key = {nullptr, WM_KEYDOWN, 'A', parameter, 0, {}};
  EXPECT_TRUE(::TranslateMessage(&key));
  MSG posted{};
  ASSERT_TRUE(::PeekMessageW(&posted, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(posted.message, WM_CHAR);
  EXPECT_EQ(posted.wParam, WPARAM{'a'});
  EXPECT_EQ(posted.lParam, parameter);
  const MSG withAlt = {nullptr, WM_SYSKEYDOWN, 'A', parameter, 0, {}};
  EXPECT_TRUE(::TranslateMessage(&withAlt));
  ASSERT_TRUE(::PeekMessageW(&posted, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(posted.message, WM_SYSCHAR);
}

TEST(Keyboard, TranslationOfAllElsePostsNothing) {
  const platform::SimulatedMachine machine;
  MSG posted{};
  const std::pair<UINT, WPARAM> keys[] = {
      {WM_KEYDOWN, VK_LEFT}, {WM_KEYUP, 'A'}, {WM_SYSKEYUP, 'A'}};
  for (const auto& [message, key] : keys) {
    const MSG given = {nullptr, message, key, 1, 0, {}};
    EXPECT_TRUE(::TranslateMessage(&given)) << "message " << message;
  }
  const MSG other = {nullptr, WM_COMMAND, 'A', 1, 0, {}};
  EXPECT_FALSE(::TranslateMessage(&other));
  EXPECT_FALSE(::PeekMessageW(&posted, nullptr, 0, 0, PM_REMOVE));
}

TEST(Keyboard, NothingIsDownWhereNothingCanBePressed) {
  const platform::SimulatedMachine machine;
  EXPECT_EQ(::GetAsyncKeyState(VK_LBUTTON), 0);
  EXPECT_EQ(::GetKeyState(VK_SHIFT), 0);
  EXPECT_EQ(::GetKeyState(-1), 0);
  EXPECT_EQ(::GetKeyState(256), 0);
  Keys keys;
  keys.fill(0x80);
  EXPECT_TRUE(::GetKeyboardState(keys.data()));
  EXPECT_EQ(keys, Keys{});
  EXPECT_FALSE(::GetKeyboardState(nullptr));
  EXPECT_EQ(::GetLastError(), ERROR_NOACCESS);
}

TEST(Keyboard, BeepingTakesADesktop) {
  const platform::SimulatedMachine machine;
  EXPECT_FALSE(::MessageBeep(MB_OK));
  EXPECT_EQ(::GetLastError(), ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
}

TEST(Pointer, TheSystemsShapesAreShared) {
  const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
  ASSERT_NE(arrow, nullptr);
  EXPECT_EQ(::LoadCursorW(nullptr, IDC_ARROW), arrow);
  for (const LPCWSTR each : {IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_SIZEWE, IDC_SIZENS, IDC_HAND}) {
    EXPECT_NE(::LoadCursorW(nullptr, each), nullptr);
    EXPECT_NE(::LoadCursorW(nullptr, each), arrow);
  }
  EXPECT_EQ(::LoadCursorW(nullptr, MAKEINTRESOURCEW(1)), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
  EXPECT_EQ(::LoadCursorW(::GetModuleHandleW(nullptr), IDC_ARROW), nullptr);
  EXPECT_EQ(::LoadCursorW(nullptr, L"name"), nullptr);
}

TEST(Pointer, AShapeIsSetUntilAnotherIs) {
  const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
  const HCURSOR wait = ::LoadCursorW(nullptr, IDC_WAIT);
  EXPECT_EQ(::GetCursor(), arrow);
  EXPECT_EQ(::SetCursor(wait), arrow);
  EXPECT_EQ(::SetCursor(nullptr), wait);
  EXPECT_EQ(::GetCursor(), nullptr);
  EXPECT_EQ(::SetCursor(arrow), nullptr);
  EXPECT_EQ(::SetCursor(reinterpret_cast<HCURSOR>(UINT_PTR{4})), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_CURSOR_HANDLE);
  EXPECT_EQ(::GetCursor(), arrow);
}

}  // namespace
