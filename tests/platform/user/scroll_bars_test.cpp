#include <windows.h>

#include <gmock/gmock.h>

#include "platform/kit/recording_window.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ScrollBars : public ::testing::Test {
 protected:
  void SetUp() override { recording_.Take(); }

  std::vector<int> Range(int bar) const {
    int minimum = -1;
    int maximum = -1;
    EXPECT_TRUE(::GetScrollRange(window_, bar, &minimum, &maximum));
    return {minimum, maximum};
  }
  DWORD Bars() const {
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(window_, GWL_STYLE));
    return style & (WS_HSCROLL | WS_VSCROLL);
  }

  static constexpr RECT kPlace = {0, 0, 200, 100};
  Recording recording_;
  const HWND window_ = Recording::Create({}, nullptr, 0, kPlace);
};

TEST_F(ScrollBars, ABarTakesRoomOfTheClientAreaAndThatIsNotifiedOnce) {
  ASSERT_EQ(::GetSystemMetrics(SM_CXVSCROLL), 17);
  ASSERT_EQ(::GetSystemMetrics(SM_CYHSCROLL), 17);
  EXPECT_TRUE(::ShowScrollBar(window_, SB_BOTH, TRUE));
  EXPECT_THAT(recording_.Take(), ElementsAre("SIZE 183,83"));
  RECT area{};
  EXPECT_TRUE(::GetClientRect(window_, &area));
  EXPECT_EQ(area.right, 183);
  EXPECT_EQ(area.bottom, 83);
  EXPECT_EQ(Bars(), WS_HSCROLL | WS_VSCROLL);
  EXPECT_TRUE(::ShowScrollBar(window_, SB_VERT, TRUE));
  EXPECT_TRUE(::ShowScrollBar(window_, SB_VERT, FALSE));
  EXPECT_THAT(recording_.Take(), ElementsAre("SIZE 200,83"));
  EXPECT_TRUE(::GetWindowRect(window_, &area));
  EXPECT_EQ(area.right, 200);
  // A window may be made with them, and be smaller than they are.
  const HWND other = Recording::Create({}, nullptr, WS_HSCROLL, kPlace);
  ::MoveWindow(other, 0, 0, 300, 100, FALSE);
  ::MoveWindow(other, 0, 0, 300, 10, FALSE);
  EXPECT_THAT(recording_.Take(), ElementsAre("NCCREATE", "CREATE", "SIZE 300,83", "SIZE 300,0"));
}

TEST_F(ScrollBars, ARangeWithNothingToScrollHidesTheBar) {
  EXPECT_THAT(Range(SB_VERT), ElementsAre(0, 100));
  ::ShowScrollBar(window_, SB_VERT, TRUE);
  EXPECT_TRUE(::SetScrollRange(window_, SB_VERT, 1, 1, TRUE));
  EXPECT_EQ(Bars(), 0u);
  EXPECT_TRUE(::SetScrollRange(window_, SB_VERT, 1, 50, TRUE));
  EXPECT_EQ(Bars(), WS_VSCROLL);
  EXPECT_THAT(recording_.Take(), ElementsAre("SIZE 183,100", "SIZE 200,100", "SIZE 183,100"));
  EXPECT_THAT(Range(SB_VERT), ElementsAre(1, 50));
  EXPECT_THAT(Range(SB_HORZ), ElementsAre(0, 100));
  EXPECT_TRUE(::SetScrollRange(window_, SB_HORZ, 1, 60, TRUE));
  EXPECT_THAT(recording_.Take(), IsEmpty()) << "a hidden bar stays so with another range";
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
  SCROLLINFO told{sizeof told, SIF_ALL, -1, 0, 0, 0, -1};
  EXPECT_TRUE(::GetScrollInfo(window_, SB_VERT, &told));
  EXPECT_EQ(told.nMin, 0);
  EXPECT_EQ(told.nMax, 99);
  EXPECT_EQ(told.nPage, 10u);
  EXPECT_EQ(told.nPos, 90);
  EXPECT_EQ(told.nTrackPos, 0);
  ::ShowScrollBar(window_, SB_VERT, TRUE);
  info = {sizeof info, SIF_PAGE, 0, 0, 1'000, 0, 0};
  EXPECT_EQ(::SetScrollInfo(window_, SB_VERT, &info, TRUE), 0);
  EXPECT_EQ(Bars(), 0u) << "all of it is on one page";
}

}  // namespace
