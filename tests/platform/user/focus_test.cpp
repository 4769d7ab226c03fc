// Who has the keyboard, and who shows a caret.
#include <windows.h>

#include <gmock/gmock.h>

#include <thread>

#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FocusTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ::SetFocus(first_);
    recording_.Take();
  }

  Recording recording_;
  const HWND window_ = Recording::Create(L"", nullptr, WS_VISIBLE);
  const HWND first_ = Recording::Create(L"first", window_, WS_CHILD | WS_VISIBLE);
  const HWND second_ = Recording::Create(L"second", window_, WS_CHILD | WS_VISIBLE);
};

TEST_F(FocusTest, BothWindowsAreNotifiedWhoTheOtherIs) {
  std::vector<HWND> others;
  const Recording::Answer note = [&](HWND, UINT, WPARAM wParam, LPARAM) -> LRESULT {
    others.push_back(reinterpret_cast<HWND>(wParam));
    return 0;
  };
  recording_.On(WM_KILLFOCUS, note);
  recording_.On(WM_SETFOCUS, note);
  EXPECT_EQ(::SetFocus(second_), first_);
  EXPECT_EQ(::GetFocus(), second_);
  EXPECT_THAT(recording_.Take(), ElementsAre("first:KILLFOCUS", "second:SETFOCUS"));
  EXPECT_THAT(others, ElementsAre(second_, first_));
  EXPECT_EQ(::SetFocus(second_), second_);
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_EQ(::SetFocus(nullptr), second_);
  EXPECT_EQ(::GetFocus(), nullptr);
}

TEST_F(FocusTest, ADisabledWindowNeitherKeepsNorGetsIt) {
  ::EnableWindow(first_, FALSE);
  EXPECT_EQ(::GetFocus(), nullptr);
  ::SetFocus(second_);
  recording_.Take();
  EXPECT_EQ(ErrorOf(::SetFocus(first_)), DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_EQ(::GetFocus(), second_);
  ::EnableWindow(window_, FALSE);
  EXPECT_EQ(::GetFocus(), nullptr);
  EXPECT_EQ(::SetFocus(second_), nullptr) << "its parent is disabled";
}

TEST_F(FocusTest, AWindowThatIsHiddenOrDestroyedLeavesItToItsParent) {
  ::ShowWindow(first_, SW_HIDE);
  EXPECT_EQ(::GetFocus(), window_);
  ::SetFocus(second_);
  recording_.Take();
  ::DestroyWindow(second_);
  EXPECT_THAT(recording_.Take(),
              ElementsAre("second:KILLFOCUS", "SETFOCUS", "second:DESTROY", "second:NCDESTROY"));
  EXPECT_EQ(::GetFocus(), window_);
}

TEST_F(FocusTest, AWindowThatGivesItAwayWhenItLosesItIsObeyed) {
  recording_.On(WM_KILLFOCUS, [this](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    if (window == first_) ::SetFocus(window_);
    return 0;
  });
  ::SetFocus(second_);
  EXPECT_EQ(::GetFocus(), window_);
}

TEST_F(FocusTest, AnotherWindowsActivationIsNotifiedToBoth) {
  const HWND other = Recording::Create(L"other");
  recording_.Take();
  EXPECT_TRUE(::SetForegroundWindow(other));
  EXPECT_EQ(::GetActiveWindow(), other);
  EXPECT_EQ(::GetFocus(), other);
  EXPECT_THAT(recording_.Take(),
              ElementsAre("ACTIVATE 0", "other:ACTIVATE 1", "first:KILLFOCUS", "other:SETFOCUS"));
  EXPECT_TRUE(::SetForegroundWindow(other));
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_FALSE(::SetForegroundWindow(first_)) << "a child";
  ::DestroyWindow(other);
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

TEST_F(FocusTest, WhenAnOwnedWindowGoesItsOwnerIsActiveUnlessItIsDisabled) {
  const HWND owned = Recording::Create(L"owned", window_, WS_VISIBLE);
  EXPECT_EQ(::GetActiveWindow(), owned);
  recording_.Take();
  ::DestroyWindow(owned);
  EXPECT_EQ(::GetActiveWindow(), window_);
  EXPECT_EQ(::GetFocus(), window_);
  EXPECT_THAT(recording_.Take(), ElementsAre("owned:ACTIVATE 0", "ACTIVATE 1", "owned:KILLFOCUS",
                                             "SETFOCUS", "owned:DESTROY", "owned:NCDESTROY"));
  const HWND another = Recording::Create(L"", window_, WS_VISIBLE);
  ::EnableWindow(window_, FALSE);
  ::DestroyWindow(another);
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

using Caret = FocusTest;

TEST_F(Caret, OnlyTheWindowThatHasItMayShowIt) {
  EXPECT_EQ(ErrorOf(::ShowCaret(first_)), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_FALSE(::DestroyCaret());
  EXPECT_FALSE(::SetCaretPos(1, 2));
  EXPECT_TRUE(::CreateCaret(first_, nullptr, 3, 12));
  EXPECT_TRUE(::ShowCaret(first_));
  std::thread([this] { EXPECT_FALSE(::ShowCaret(first_)) << "another thread's"; }).join();
  EXPECT_FALSE(::ShowCaret(second_));
  EXPECT_FALSE(::HideCaret(second_));
  EXPECT_TRUE(::HideCaret(nullptr)) << "whichever has it";
  EXPECT_TRUE(::CreateCaret(second_, nullptr, 0, 0));
  EXPECT_FALSE(::HideCaret(first_)) << "a new one ends the one before";
  EXPECT_TRUE(::DestroyCaret());
  EXPECT_FALSE(::DestroyCaret());
}

TEST_F(Caret, ItsPlaceIsKeptAsLongAsItsWindow) {
  POINT place = {7, 7};
  EXPECT_TRUE(::GetCaretPos(&place));
  EXPECT_EQ(place.x, 0);
  ::CreateCaret(first_, nullptr, 3, 12);
  EXPECT_TRUE(::SetCaretPos(-4, 15));
  EXPECT_TRUE(::GetCaretPos(&place));
  EXPECT_EQ(place.x, -4);
  EXPECT_EQ(place.y, 15);
  ::DestroyWindow(first_);
  EXPECT_FALSE(::SetCaretPos(1, 1));
  EXPECT_FALSE(::DestroyCaret());
}

}  // namespace
