// What keys type as long as nothing is known of the user's layout, and the shapes of the pointer.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>

namespace {

using Keys = std::array<BYTE, 256>;

constexpr BYTE kToggled = 0x01;

Keys Down(std::initializer_list<int> keys, BYTE capsLock = 0) {
  Keys down{};
  for (const int key : keys)
    down.at(static_cast<std::size_t>(key)) = 0x80;
  down[VK_CAPITAL] = capsLock;
  return down;
}

constexpr int kNothing = -1;

int Typed(UINT virtualKey, const Keys& keys, UINT scanCode = 0) {
  WORD character = 0;
  const int count = ::ToAscii(virtualKey, scanCode, keys.data(), &character, 0);
  return count == 1 ? character : kNothing;
}

TEST(Keyboard, KeysTypeWhatAUsKeyboardTypes) {
  const std::pair<Keys, std::vector<std::pair<UINT, int>>> cases[] = {
      {{}, {{'A', 'a'}, {'5', '5'}, {VK_NUMPAD7, '7'}, {VK_DECIMAL, '.'}, {VK_OEM_MINUS, '-'}}},
      {{}, {{VK_SPACE, ' '}, {VK_RETURN, 13}, {VK_BACK, 8}, {VK_TAB, 9}, {VK_ESCAPE, 27}}},
      {{}, {{VK_DELETE, kNothing}, {VK_LEFT, kNothing}, {VK_F5, kNothing}}},
      {Down({VK_SHIFT}), {{'A', 'A'}, {'5', '%'}, {VK_DIVIDE, '/'}, {VK_OEM_3, '~'}}},
      {Down({VK_SHIFT}), {{VK_RETURN, 13}, {VK_SHIFT, kNothing}}},
      {Down({}, kToggled), {{'Z', 'Z'}, {'5', '5'}}},
      {Down({VK_SHIFT}, kToggled), {{'Z', 'z'}}},
      {Down({VK_CONTROL}), {{'A', 1}, {'5', kNothing}}},
      {Down({VK_CONTROL, VK_SHIFT}), {{'Z', 26}}},
      {Down({VK_CONTROL, VK_MENU}), {{'A', kNothing}}},
  };
  for (const auto& [keys, typed] : cases) {
    for (const auto& [key, character] : typed)
      EXPECT_EQ(Typed(key, keys), character) << "key " << key;
  }
  EXPECT_EQ(Typed('A', {}, 0x1E), 'a');
  EXPECT_EQ(Typed('A', {}, 0x801E), kNothing) << "it goes up";
}

TEST(Keyboard, TranslationPostsACharacterForKeysThatGoDownAndTypeOne) {
  const struct {
    UINT message;
    WPARAM key;
    BOOL isKey;
    UINT posted = WM_NULL;
  } cases[] = {
      {WM_KEYDOWN, 'A', TRUE, WM_CHAR}, {WM_SYSKEYDOWN, 'A', TRUE, WM_SYSCHAR},
      {WM_KEYDOWN, VK_LEFT, TRUE},      {WM_KEYUP, 'A', TRUE},
      {WM_SYSKEYUP, 'A', TRUE},         {WM_COMMAND, 'A', FALSE},
  };
  for (const auto& each : cases) {
    const MSG given = {nullptr, each.message, each.key, 0x001E0001, 0, {}};
    EXPECT_EQ(::TranslateMessage(&given), each.isKey) << each.message;
    MSG posted{};
    EXPECT_EQ(::PeekMessageW(&posted, nullptr, 0, 0, PM_REMOVE), each.posted != WM_NULL);
    EXPECT_EQ(posted.message, each.posted) << each.message;
    EXPECT_EQ(posted.wParam, each.posted != WM_NULL ? WPARAM{'a'} : 0) << each.message;
    EXPECT_EQ(posted.lParam, each.posted != WM_NULL ? given.lParam : 0) << each.message;
  }
}

TEST(Pointer, TheSystemsShapesAreShared) {
  const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
  ASSERT_NE(arrow, nullptr);
  EXPECT_EQ(::LoadCursorW(nullptr, IDC_ARROW), arrow);
  for (const LPCWSTR each : {IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_SIZEWE, IDC_SIZENS, IDC_HAND}) {
    EXPECT_NE(::LoadCursorW(nullptr, each), nullptr);
    EXPECT_NE(::LoadCursorW(nullptr, each), arrow);
  }
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
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_CURSOR_HANDLE});
  EXPECT_EQ(::GetCursor(), arrow);
}

}  // namespace
