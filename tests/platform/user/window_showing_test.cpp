#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kit/recording_window.h"
#include "platform/kit/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowShowing : public ::testing::Test {
 protected:
  void SetUp() override { recording_.Take(); }

  Recording recording_;
  const HWND window_ = Recording::Create();
};

TEST_F(WindowShowing, TheMessagesOfShowingAndHidingComeInOrderAndOnce) {
  EXPECT_FALSE(::IsWindowVisible(window_));
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOW));
  EXPECT_TRUE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Take(),
              ElementsAre("SHOWWINDOW 1", "SIZE 0,0", "MOVE 0,0", "ACTIVATE 1", "SETFOCUS"));
  EXPECT_TRUE(::ShowWindow(window_, SW_SHOWNORMAL));
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_TRUE(::ShowWindow(window_, SW_HIDE));
  EXPECT_FALSE(::ShowWindow(window_, SW_HIDE));
  EXPECT_FALSE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Take(), ElementsAre("SHOWWINDOW 0", "ACTIVATE 0", "KILLFOCUS"));
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOWNOACTIVATE));
  EXPECT_TRUE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Take(), ElementsAre("SHOWWINDOW 1")) << "without the keyboard";
}

TEST_F(WindowShowing, AChildIsVisibleOnlyWithItsParent) {
  const HWND child = Recording::Create(L"child", window_, WS_CHILD | WS_VISIBLE);
  EXPECT_FALSE(::IsWindowVisible(child));
  ::ShowWindow(window_, SW_SHOW);
  EXPECT_TRUE(::IsWindowVisible(child));
  EXPECT_EQ(::GetFocus(), window_);
  ::ShowWindow(child, SW_HIDE);
  EXPECT_FALSE(::IsWindowVisible(child));
}

TEST_F(WindowShowing, EnablingTellsWhatWasBeforeAndOnlyChanges) {
  EXPECT_TRUE(::IsWindowEnabled(window_));
  EXPECT_FALSE(::EnableWindow(window_, TRUE));
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_FALSE(::EnableWindow(window_, FALSE));
  EXPECT_FALSE(::IsWindowEnabled(window_));
  EXPECT_TRUE(::EnableWindow(window_, FALSE));
  EXPECT_TRUE(::EnableWindow(window_, TRUE));
  EXPECT_THAT(recording_.Take(), ElementsAre("CANCELMODE", "ENABLE 0", "ENABLE 1"));
  EXPECT_FALSE(::IsWindowEnabled(Recording::Create(L"", window_, WS_CHILD | WS_DISABLED)));
}

TEST_F(WindowShowing, WindowsOfOtherThreadsAreShownByTheirOwn) {
  DWORD shownOn = 0;
  recording_.On(WM_SHOWWINDOW, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    shownOn = ::GetCurrentThreadId();
    return 0;
  });
  const WindowThread owner;
  EXPECT_FALSE(::ShowWindow(owner.Window(), SW_SHOW));
  EXPECT_TRUE(::IsWindowVisible(owner.Window()));
  EXPECT_EQ(shownOn, owner.Id());
  EXPECT_FALSE(::EnableWindow(owner.Window(), FALSE));
  EXPECT_FALSE(::IsWindowEnabled(owner.Window()));
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

}  // namespace
