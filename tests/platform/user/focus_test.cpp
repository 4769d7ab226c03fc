#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/user/recording_window.h"
#include "platform/user/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FocusTest : public ::testing::Test {
 protected:
  void SetUp() override { recording_.Clear(); }
  void TearDown() override {
    ::DestroyWindow(window_);
    ::SetFocus(nullptr);
  }

  Recording recording_;
  HWND window_ = Recording::Create(L"", nullptr, WS_VISIBLE);
  HWND first_ = Recording::Create(L"first", window_, WS_CHILD | WS_VISIBLE);
  HWND second_ = Recording::Create(L"second", window_, WS_CHILD | WS_VISIBLE);
};

TEST_F(FocusTest, BothWindowsAreToldWhoTheOtherIs) {
  ::SetFocus(first_);
  std::vector<HWND> others;
  const Recording::Answer note = [&](HWND, UINT, WPARAM wParam, LPARAM) -> LRESULT {
    others.push_back(reinterpret_cast<HWND>(wParam));
    return 0;
  };
  recording_.On(WM_KILLFOCUS, note);
  recording_.On(WM_SETFOCUS, note);
  recording_.Clear();
  EXPECT_EQ(::SetFocus(second_), first_);
  EXPECT_EQ(::GetFocus(), second_);
  EXPECT_THAT(recording_.Entries(), ElementsAre("first:KILLFOCUS", "second:SETFOCUS"));
  EXPECT_THAT(others, ElementsAre(second_, first_));
  EXPECT_EQ(::SetFocus(second_), second_);
  EXPECT_EQ(recording_.Entries().size(), 2u);
  EXPECT_EQ(::SetFocus(nullptr), second_);
  EXPECT_EQ(::GetFocus(), nullptr);
}

TEST_F(FocusTest, AWindowThatTakesNoInputCannotHaveIt) {
  ::SetFocus(second_);
  recording_.Clear();
  const WindowThread other;
  ::EnableWindow(first_, FALSE);
  recording_.Clear();
  EXPECT_EQ(::SetFocus(first_), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(::SetFocus(other.Window()), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_ACCESS_DENIED);
  EXPECT_THAT(recording_.Entries(), IsEmpty());
  EXPECT_EQ(::GetFocus(), second_);
  ::EnableWindow(window_, FALSE);
  EXPECT_EQ(::GetFocus(), nullptr);
  EXPECT_EQ(::SetFocus(second_), nullptr);
}

TEST_F(FocusTest, AWindowThatIsDisabledHiddenOrDestroyedLosesIt) {
  ::SetFocus(first_);
  ::EnableWindow(first_, FALSE);
  EXPECT_EQ(::GetFocus(), nullptr);
  ::EnableWindow(first_, TRUE);
  ::SetFocus(first_);
  ::ShowWindow(first_, SW_HIDE);
  EXPECT_EQ(::GetFocus(), window_);
  ::SetFocus(second_);
  recording_.Clear();
  ::DestroyWindow(second_);
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("second:KILLFOCUS", "SETFOCUS", "second:DESTROY", "second:NCDESTROY"));
  EXPECT_EQ(::GetFocus(), window_);
}

TEST_F(FocusTest, AWindowThatGivesItAwayWhenItLosesItIsObeyed) {
  ::SetFocus(first_);
  recording_.On(WM_KILLFOCUS, [this](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    if (window == first_) ::SetFocus(window_);
    return 0;
  });
  ::SetFocus(second_);
  EXPECT_EQ(::GetFocus(), window_);
}

TEST_F(FocusTest, AnotherWindowsActivationIsToldToBoth) {
  const HWND other = Recording::Create(L"other");
  ::SetFocus(first_);
  recording_.Clear();
  EXPECT_TRUE(::SetForegroundWindow(other));
  EXPECT_EQ(::GetActiveWindow(), other);
  EXPECT_EQ(::GetFocus(), other);
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("ACTIVATE 0", "other:ACTIVATE 1", "first:KILLFOCUS", "other:SETFOCUS"));
  recording_.Clear();
  EXPECT_TRUE(::SetForegroundWindow(other));
  EXPECT_THAT(recording_.Entries(), IsEmpty());
  EXPECT_FALSE(::SetForegroundWindow(first_));
  ::DestroyWindow(other);
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

TEST_F(FocusTest, WhenAnOwnedWindowGoesItsOwnerIsActive) {
  const HWND owned = Recording::Create(L"owned", window_, WS_VISIBLE);
  EXPECT_EQ(::GetActiveWindow(), owned);
  recording_.Clear();
  ::DestroyWindow(owned);
  EXPECT_EQ(::GetActiveWindow(), window_);
  EXPECT_EQ(::GetFocus(), window_);
  EXPECT_THAT(recording_.Entries(), ElementsAre("owned:ACTIVATE 0", "ACTIVATE 1", "owned:KILLFOCUS",
                                                "SETFOCUS", "owned:DESTROY", "owned:NCDESTROY"));
}

TEST_F(FocusTest, ADisabledOwnerStaysInactive) {
  const HWND owned = Recording::Create(L"owned", window_, WS_VISIBLE);
  ::EnableWindow(window_, FALSE);
  ::DestroyWindow(owned);
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

}  // namespace
