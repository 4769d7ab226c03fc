#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/user/recording_window.h"
#include "platform/user/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowShowing : public ::testing::Test {
 protected:
  void TearDown() override { ::DestroyWindow(window_); }

  static HWND Child(HWND parent, DWORD style = 0) {
    return Recording::Create(L"child", parent, WS_CHILD | style);
  }

  Recording recording_;
  HWND window_ = Recording::Create();
};

TEST_F(WindowShowing, TheMessagesOfShowingAndHidingComeInOrderAndOnce) {
  recording_.Clear();
  EXPECT_FALSE(::IsWindowVisible(window_));
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOW));
  EXPECT_TRUE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("SHOWWINDOW 1", "SIZE 0,0", "MOVE 0,0", "ACTIVATE 1", "SETFOCUS"));
  recording_.Clear();
  EXPECT_TRUE(::ShowWindow(window_, SW_SHOWNORMAL));
  EXPECT_THAT(recording_.Entries(), IsEmpty());
  EXPECT_TRUE(::ShowWindow(window_, SW_HIDE));
  EXPECT_FALSE(::ShowWindow(window_, SW_HIDE));
  EXPECT_FALSE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Entries(), ElementsAre("SHOWWINDOW 0", "ACTIVATE 0", "KILLFOCUS"));
}

TEST_F(WindowShowing, AWindowCanBeShownWithoutGettingTheKeyboard) {
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOWNOACTIVATE));
  EXPECT_TRUE(::IsWindowVisible(window_));
  EXPECT_EQ(::GetActiveWindow(), nullptr);
  EXPECT_EQ(::GetFocus(), nullptr);
}

TEST_F(WindowShowing, AnUnknownCommandDoesNothing) {
  recording_.Clear();
  EXPECT_FALSE(::ShowWindow(window_, 3));
  EXPECT_THAT(recording_.Entries(), IsEmpty());
}

TEST_F(WindowShowing, AWindowMadeVisibleIsShownWhenItHasBeenMade) {
  recording_.Clear();
  recording_.On(WM_CREATE, [](HWND window, UINT, WPARAM, LPARAM lParam) -> LRESULT {
    EXPECT_FALSE(::IsWindowVisible(window));
    EXPECT_NE(reinterpret_cast<const CREATESTRUCTW*>(lParam)->style & WS_VISIBLE, 0u);
    return 0;
  });
  const HWND shown = Recording::Create(L"", nullptr, WS_VISIBLE);
  EXPECT_THAT(recording_.Entries(), ElementsAre("NCCREATE", "CREATE", "SHOWWINDOW 1", "SIZE 0,0",
                                                "MOVE 0,0", "ACTIVATE 1", "SETFOCUS"));
  ::DestroyWindow(shown);
}

TEST_F(WindowShowing, AChildIsVisibleOnlyWithItsParent) {
  const HWND child = Child(window_, WS_VISIBLE);
  EXPECT_FALSE(::IsWindowVisible(child));
  ::ShowWindow(window_, SW_SHOW);
  EXPECT_TRUE(::IsWindowVisible(child));
  EXPECT_EQ(::GetFocus(), window_);
  ::ShowWindow(child, SW_HIDE);
  EXPECT_FALSE(::IsWindowVisible(child));
}

TEST_F(WindowShowing, EnablingTellsWhatWasBeforeAndOnlyChanges) {
  recording_.Clear();
  EXPECT_TRUE(::IsWindowEnabled(window_));
  EXPECT_FALSE(::EnableWindow(window_, TRUE));
  EXPECT_THAT(recording_.Entries(), IsEmpty());
  EXPECT_FALSE(::EnableWindow(window_, FALSE));
  EXPECT_FALSE(::IsWindowEnabled(window_));
  EXPECT_TRUE(::EnableWindow(window_, FALSE));
  EXPECT_TRUE(::EnableWindow(window_, TRUE));
  EXPECT_THAT(recording_.Entries(), ElementsAre("CANCELMODE", "ENABLE 0", "ENABLE 1"));
  const HWND disabled = Child(window_, WS_DISABLED);
  EXPECT_FALSE(::IsWindowEnabled(disabled));
}

TEST_F(WindowShowing, WindowsOfOtherThreadsAreShownByTheirOwn) {
  const WindowThread owner;
  DWORD shownOn = 0;
  recording_.On(WM_SHOWWINDOW, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    shownOn = ::GetCurrentThreadId();
    return 0;
  });
  EXPECT_FALSE(::ShowWindow(owner.Window(), SW_SHOW));
  EXPECT_TRUE(::IsWindowVisible(owner.Window()));
  EXPECT_EQ(shownOn, owner.Id());
  EXPECT_FALSE(::EnableWindow(owner.Window(), FALSE));
  EXPECT_FALSE(::IsWindowEnabled(owner.Window()));
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

TEST_F(WindowShowing, AStaleWindowIsNeitherShownNorEnabled) {
  const HWND stale = Recording::Create();
  ::DestroyWindow(stale);
  EXPECT_FALSE(::ShowWindow(stale, SW_SHOW));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
  EXPECT_FALSE(::IsWindowVisible(stale));
  EXPECT_FALSE(::EnableWindow(stale, TRUE));
  EXPECT_FALSE(::IsWindowEnabled(stale));
  EXPECT_FALSE(::SetForegroundWindow(stale));
}

TEST_F(WindowShowing, AWindowMayEndWhenItIsShown) {
  recording_.On(WM_SHOWWINDOW, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    ::DestroyWindow(window);
    return 0;
  });
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOW));
  EXPECT_EQ(Recording::Create(L"", nullptr, WS_VISIBLE), nullptr);
}

}  // namespace
