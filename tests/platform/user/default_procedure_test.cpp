#include <windows.h>

#include <gmock/gmock.h>

#include "platform/kit/recording_window.h"

namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class DefaultProcedure : public ::testing::Test {
 protected:
  Recording recording_;
  const HWND window_ = Recording::Create(L"title");
};

TEST_F(DefaultProcedure, ItAllowsCreationAndSuspensionAndClosingDestroys) {
  EXPECT_EQ(::DefWindowProcW(window_, WM_NCCREATE, 0, 0), TRUE);
  EXPECT_EQ(::DefWindowProcW(window_, WM_POWERBROADCAST, PBT_APMQUERYSUSPEND, 0), TRUE);
  EXPECT_EQ(::DefWindowProcW(window_, WM_CREATE, 0, 0), 0);
  EXPECT_EQ(::DefWindowProcW(window_, WM_APP, 0, 0), 0);
  ::DefWindowProcW(window_, WM_CLOSE, 0, 0);
  EXPECT_FALSE(::IsWindow(window_));
}

TEST_F(DefaultProcedure, ItKeepsTheTextAndCutsItToTheRoom) {
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

TEST_F(DefaultProcedure, AMenuIsAskedForByMouseAndKeysOfTheWindowAndThoseAroundIt) {
  const HWND owned = Recording::Create(L"owned", window_, 0, {100, 200, 300, 400});
  const HWND child = Recording::Create(L"child", owned, WS_CHILD, {10, 20, 50, 60});
  std::vector<HWND> asked;
  LPARAM place = 0;
  recording_.On(WM_CONTEXTMENU, [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    EXPECT_EQ(reinterpret_cast<HWND>(wParam), child);
    asked.push_back(window);
    place = lParam;
    return ::DefWindowProcW(window, message, wParam, lParam);
  });
  ::DefWindowProcW(child, WM_RBUTTONUP, 0, MAKELPARAM(3, 4));
  EXPECT_EQ(place, MAKELPARAM(113, 224));
  ::DefWindowProcW(child, WM_KEYUP, VK_APPS, 0);
  EXPECT_EQ(place, -1);
  EXPECT_THAT(asked, ElementsAre(child, owned, child, owned)) << "an owner is not asked";
}

TEST_F(DefaultProcedure, ABroadcastReachesEveryTopLevelWindowAndNoOther) {
  const HWND owned = Recording::Create(L"owned", window_);
  Recording::Create(L"child", window_, WS_CHILD);
  Recording::Create(L"messages", HWND_MESSAGE);
  const UINT broadcast = ::RegisterWindowMessageW(L"Recording.Broadcast");
  std::vector<HWND> reached;
  recording_.On(broadcast, [&](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    reached.push_back(window);
    return 0;
  });
  ::SendMessageW(HWND_BROADCAST, broadcast, 0, 0);
  EXPECT_THAT(reached, UnorderedElementsAre(window_, owned));
  EXPECT_TRUE(::PostMessageW(HWND_BROADCAST, broadcast, 0, 0));
  EXPECT_EQ(reached.size(), 2u) << "a posted message waits";
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    ::DispatchMessageW(&message);
  EXPECT_THAT(reached, UnorderedElementsAre(window_, owned, window_, owned));
}

}  // namespace
