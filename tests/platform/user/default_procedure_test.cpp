#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/user/recording_window.h"
#include "platform/user/window_thread.h"

namespace {

using ::testing::ElementsAre;

class DefaultProcedure : public ::testing::Test {
 protected:
  void TearDown() override { ::DestroyWindow(window_); }

  Recording recording_;
  HWND window_ = Recording::Create(L"title");
};

TEST_F(DefaultProcedure, ItKeepsTheText) {
  wchar_t text[6] = L"xxxxx";
  EXPECT_EQ(::GetWindowTextLengthW(window_), 5);
  EXPECT_EQ(::GetWindowTextW(window_, text, 6), 5);
  EXPECT_STREQ(text, L"title");
  EXPECT_TRUE(::SetWindowTextW(window_, L"another one"));
  EXPECT_EQ(::GetWindowTextLengthW(window_), 11);
  EXPECT_EQ(::GetWindowTextW(window_, text, 6), 5);
  EXPECT_STREQ(text, L"anoth");
  EXPECT_TRUE(::SetWindowTextW(window_, nullptr));
  EXPECT_EQ(::GetWindowTextW(window_, text, 6), 0);
  EXPECT_STREQ(text, L"");
  EXPECT_EQ(::GetWindowTextW(window_, text, 0), 0);
}

TEST_F(DefaultProcedure, AProcedureThatKeepsTheTextItselfIsAsked) {
  recording_.On(WM_GETTEXTLENGTH, [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return 77; });
  recording_.On(WM_SETTEXT, [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return FALSE; });
  EXPECT_EQ(::GetWindowTextLengthW(window_), 77);
  EXPECT_FALSE(::SetWindowTextW(window_, L"no"));
}

TEST_F(DefaultProcedure, TheTextOfAnotherThreadsWindowIsRead) {
  const WindowThread owner;
  EXPECT_TRUE(::SetWindowTextW(owner.Window(), L"set"));
  wchar_t text[4];
  EXPECT_EQ(::GetWindowTextW(owner.Window(), text, 4), 3);
  EXPECT_STREQ(text, L"set");
}

TEST_F(DefaultProcedure, ClosingDestroys) {
  const HWND window = Recording::Create();
  recording_.Clear();
  ::SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_THAT(recording_.Entries(), ElementsAre("CLOSE", "DESTROY", "NCDESTROY"));
  EXPECT_FALSE(::IsWindow(window));
}

TEST_F(DefaultProcedure, ARequestForHelpGoesUpToTheFirstThatAnswers) {
  const HWND owned = Recording::Create(L"owned", window_);
  const HWND child = Recording::Create(L"child", owned, WS_CHILD);
  std::vector<HWND> asked;
  recording_.On(WM_HELP, [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    asked.push_back(window);
    return window == window_ ? lParam : ::DefWindowProcW(window, message, wParam, lParam);
  });
  EXPECT_EQ(::SendMessageW(child, WM_HELP, 0, 33), 33);
  EXPECT_THAT(asked, ElementsAre(child, owned, window_));
}

TEST_F(DefaultProcedure, ThereIsNothingToPaintOnWithoutAScreen) {
  PAINTSTRUCT paint{};
  EXPECT_EQ(::BeginPaint(window_, &paint), nullptr);
  EXPECT_TRUE(::EndPaint(window_, &paint));
  EXPECT_TRUE(::InvalidateRect(window_, nullptr, TRUE));
  EXPECT_TRUE(::UpdateWindow(window_));
  EXPECT_FALSE(::InvalidateRect(nullptr, nullptr, TRUE));
}

TEST_F(DefaultProcedure, AWindowsStylesAndNumberCanBeReadAndChanged) {
  const HWND child =
      ::CreateWindowExW(8, L"Recording", L"", WS_CHILD | WS_TABSTOP, 0, 0, 0, 0, window_,
                        reinterpret_cast<HMENU>(UINT_PTR{1056}), nullptr, nullptr);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWLP_ID), 1056);
  EXPECT_EQ(::SetWindowLongPtrW(child, GWLP_ID, 7), 1056);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWLP_ID), 7);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWL_EXSTYLE), 8);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWL_STYLE), LONG_PTR{WS_CHILD | WS_TABSTOP});
  STYLESTRUCT change{};
  recording_.On(WM_STYLECHANGED, [&](HWND, UINT, WPARAM, LPARAM lParam) -> LRESULT {
    change = *reinterpret_cast<const STYLESTRUCT*>(lParam);
    return 0;
  });
  // Showing and relations are not changed by a style.
  ::SetWindowLongPtrW(child, GWL_STYLE, WS_GROUP | WS_VISIBLE);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWL_STYLE), LONG_PTR{WS_CHILD | WS_GROUP});
  EXPECT_EQ(change.styleOld, WS_CHILD | WS_TABSTOP);
  EXPECT_EQ(change.styleNew, WS_CHILD | WS_GROUP);
}

TEST_F(DefaultProcedure, ABroadcastReachesEveryTopLevelWindowAndNoOther) {
  const HWND owned = Recording::Create(L"owned", window_);
  Recording::Create(L"child", window_, WS_CHILD);
  const HWND hidden = Recording::Create(L"messages", HWND_MESSAGE);
  std::vector<HWND> reached;
  recording_.On(WM_APP, [&](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    reached.push_back(window);
    return 0;
  });
  ::SendMessageW(HWND_BROADCAST, WM_APP, 0, 0);
  EXPECT_THAT(reached, ElementsAre(window_, owned));
  EXPECT_TRUE(::PostMessageW(HWND_BROADCAST, WM_APP, 0, 0));
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    ::DispatchMessageW(&message);
  EXPECT_THAT(reached, ElementsAre(window_, owned, window_, owned));
  ::DestroyWindow(hidden);
}

TEST_F(DefaultProcedure, ClassesOfTheSystemAreFoundForEveryInstance) {
  WNDCLASSW found{};
  EXPECT_TRUE(::GetClassInfoW(nullptr, L"BUTTON", &found));
  EXPECT_TRUE(::GetClassInfoW(::GetModuleHandleW(nullptr), L"Button", &found));
  EXPECT_FALSE(::GetClassInfoW(nullptr, L"Recording", &found));
  EXPECT_FALSE(::UnregisterClassW(L"Button", nullptr));
  EXPECT_EQ(::GetLastError(), ERROR_CLASS_DOES_NOT_EXIST);
  // The dialog's class by its name and by the number that the name stands for.
  EXPECT_TRUE(::GetClassInfoW(nullptr, L"#32770", &found));
  EXPECT_TRUE(::GetClassInfoW(nullptr, MAKEINTRESOURCEW(32770), &found));
  const HWND button = ::CreateWindowExW(0, L"button", L"Go", WS_CHILD, 0, 0, 9, 9, window_, nullptr,
                                        nullptr, nullptr);
  EXPECT_NE(button, nullptr);
}

TEST_F(DefaultProcedure, TheScreensMeasuresAreZeroWithoutOne) {
  EXPECT_EQ(::GetSystemMetrics(SM_CXSMICON), 16);
  EXPECT_EQ(::GetSystemMetrics(SM_CYSMICON), 16);
  EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), 0);
  POINT place{};
  EXPECT_FALSE(::GetCursorPos(&place));
  EXPECT_EQ(::GetLastError(), ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
}

}  // namespace
