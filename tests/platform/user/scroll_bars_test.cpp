#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/user/recording_window.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ScrollBars : public ::testing::Test {
 protected:
  void SetUp() override { recording_.Clear(); }
  void TearDown() override { ::DestroyWindow(window_); }

  static HWND Create(DWORD style) {
    return ::CreateWindowExW(0, L"Recording", L"", style, 0, 0, 200, 100, nullptr, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
  }
  static std::vector<LONG> Client(HWND window) {
    RECT area{};
    EXPECT_TRUE(::GetClientRect(window, &area));
    return {area.left, area.top, area.right, area.bottom};
  }
  std::vector<int> Range(int bar) const {
    int minimum = -1;
    int maximum = -1;
    EXPECT_TRUE(::GetScrollRange(window_, bar, &minimum, &maximum));
    return {minimum, maximum};
  }
  DWORD Style() const { return static_cast<DWORD>(::GetWindowLongPtrW(window_, GWL_STYLE)); }

  Recording recording_;
  HWND window_ = Create(0);
};

TEST_F(ScrollBars, ABarTakesRoomOfTheClientAreaAndThatIsToldOnce) {
  ASSERT_EQ(::GetSystemMetrics(SM_CXVSCROLL), 17);
  ASSERT_EQ(::GetSystemMetrics(SM_CYHSCROLL), 17);
  EXPECT_TRUE(::ShowScrollBar(window_, SB_BOTH, TRUE));
  EXPECT_THAT(recording_.Entries(), ElementsAre("SIZE 183,83"));
  EXPECT_THAT(Client(window_), ElementsAre(0, 0, 183, 83));
  EXPECT_EQ(Style() & (WS_HSCROLL | WS_VSCROLL), WS_HSCROLL | WS_VSCROLL);
  EXPECT_TRUE(::ShowScrollBar(window_, SB_VERT, TRUE));
  EXPECT_TRUE(::ShowScrollBar(window_, SB_VERT, FALSE));
  EXPECT_THAT(recording_.Entries(), ElementsAre("SIZE 183,83", "SIZE 200,83"));
  RECT place{};
  EXPECT_TRUE(::GetWindowRect(window_, &place));
  EXPECT_EQ(place.right, 200);
}

TEST_F(ScrollBars, AWindowMayBeMadeWithThem) {
  const HWND other = Create(WS_HSCROLL);
  EXPECT_THAT(Client(other), ElementsAre(0, 0, 200, 83));
  recording_.Clear();
  ::MoveWindow(other, 0, 0, 300, 10, FALSE);
  EXPECT_THAT(recording_.Entries(), ElementsAre("SIZE 300,0"));
  ::DestroyWindow(other);
}

TEST_F(ScrollBars, ARangeWithNothingToScrollHidesTheBar) {
  EXPECT_THAT(Range(SB_VERT), ElementsAre(0, 100));
  ::ShowScrollBar(window_, SB_VERT, TRUE);
  EXPECT_TRUE(::SetScrollRange(window_, SB_VERT, 1, 1, TRUE));
  EXPECT_EQ(Style() & WS_VSCROLL, 0u);
  EXPECT_TRUE(::SetScrollRange(window_, SB_VERT, 1, 50, TRUE));
  EXPECT_EQ(Style() & WS_VSCROLL, WS_VSCROLL);
  EXPECT_THAT(recording_.Entries(), ElementsAre("SIZE 183,100", "SIZE 200,100", "SIZE 183,100"));
  EXPECT_THAT(Range(SB_VERT), ElementsAre(1, 50));
  EXPECT_THAT(Range(SB_HORZ), ElementsAre(0, 100));
}

TEST_F(ScrollBars, AHiddenBarStaysSoWithAnotherRange) {
  EXPECT_TRUE(::SetScrollRange(window_, SB_VERT, 1, 50, TRUE));
  EXPECT_TRUE(::SetScrollRange(window_, SB_VERT, 1, 60, TRUE));
  EXPECT_THAT(recording_.Entries(), IsEmpty());
}

TEST_F(ScrollBars, APositionStaysInItsRange) {
  ::SetScrollRange(window_, SB_HORZ, 1, 30, TRUE);
  EXPECT_EQ(::SetScrollPos(window_, SB_HORZ, 12, TRUE), 1);
  EXPECT_EQ(::SetScrollPos(window_, SB_HORZ, 99, TRUE), 12);
  EXPECT_EQ(::GetScrollPos(window_, SB_HORZ), 30);
  EXPECT_EQ(::GetScrollPos(window_, SB_VERT), 0);
  ::SetScrollRange(window_, SB_HORZ, 1, 20, TRUE);
  EXPECT_EQ(::GetScrollPos(window_, SB_HORZ), 20);
}

TEST_F(ScrollBars, APageShortensWhatCanBeScrolled) {
  SCROLLINFO info{sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 99, 10, 95, 0};
  EXPECT_EQ(::SetScrollInfo(window_, SB_VERT, &info, TRUE), 90);
  SCROLLINFO told{sizeof told, SIF_ALL, 0, 0, 0, 0, -1};
  EXPECT_TRUE(::GetScrollInfo(window_, SB_VERT, &told));
  EXPECT_EQ(told.nMin, 0);
  EXPECT_EQ(told.nMax, 99);
  EXPECT_EQ(told.nPage, 10u);
  EXPECT_EQ(told.nPos, 90);
  EXPECT_EQ(told.nTrackPos, 0);
  ::ShowScrollBar(window_, SB_VERT, TRUE);
  info = {sizeof info, SIF_PAGE, 0, 0, 1'000, 0, 0};
  EXPECT_EQ(::SetScrollInfo(window_, SB_VERT, &info, TRUE), 0);
  EXPECT_EQ(Style() & WS_VSCROLL, 0u) << "all of it is on one page";
}

TEST_F(ScrollBars, WhatCannotBeIsRefused) {
  EXPECT_FALSE(::ShowScrollBar(window_, SB_CTL, TRUE));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_FALSE(::SetScrollRange(window_, SB_BOTH, 0, 1, TRUE));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
  EXPECT_FALSE(::SetScrollRange(window_, SB_VERT, -2, 2'147'483'647, TRUE));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_SCROLLBAR_RANGE});
  EXPECT_FALSE(::GetScrollRange(nullptr, SB_VERT, nullptr, nullptr));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  SCROLLINFO info{sizeof info - 4, SIF_ALL, 0, 0, 0, 0, 0};
  EXPECT_FALSE(::GetScrollInfo(window_, SB_VERT, &info));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
  const HWND edit = ::CreateWindowExW(0, L"Edit", L"", WS_CHILD | WS_VSCROLL, 0, 0, 50, 50, window_,
                                      nullptr, nullptr, nullptr);
  EXPECT_EQ(::SetScrollPos(edit, SB_VERT, 3, TRUE), 0);
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_NO_SCROLLBARS});
  EXPECT_THAT(Client(edit), ElementsAre(0, 0, 50, 50)) << "a control has its own";
}

}  // namespace
