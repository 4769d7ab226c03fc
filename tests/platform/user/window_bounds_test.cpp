#include <windows.h>

#include <gmock/gmock.h>

#include "platform/kit/recording_window.h"

namespace {

using ::testing::ElementsAre;

std::vector<LONG> Numbers(const RECT& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

class WindowBounds : public ::testing::Test {
 protected:
  std::vector<LONG> ChildOnScreen() const {
    RECT place{};
    EXPECT_TRUE(::GetWindowRect(child_, &place));
    return Numbers(place);
  }

  Recording recording_;
  const HWND parent_ = Recording::Create(L"parent", nullptr, 0, {100, 50, 500, 350});
  const HWND child_ = Recording::Create(L"child", parent_, WS_CHILD, {10, 20, 40, 60});
};

TEST_F(WindowBounds, AChildLiesInItsParentAndIsNotifiedSoAndGoesWithIt) {
  EXPECT_THAT(recording_.Take(),
              ElementsAre("parent:NCCREATE", "parent:CREATE", "child:NCCREATE", "child:CREATE",
                          "child:SIZE 30,40", "child:MOVE 10,20"));
  EXPECT_THAT(ChildOnScreen(), ElementsAre(110, 70, 140, 110));
  ::MoveWindow(parent_, 0, 1, 400, 300, FALSE);
  EXPECT_THAT(ChildOnScreen(), ElementsAre(10, 21, 40, 61));
  RECT area{};
  EXPECT_TRUE(::GetClientRect(child_, &area));
  EXPECT_THAT(Numbers(area), ElementsAre(0, 0, 30, 40));
}

TEST_F(WindowBounds, OnlyWhatChangesIsNotified) {
  const struct {
    int x, y, width, height;
    UINT flags;
    std::vector<std::string> told;
  } cases[] = {
      {1, 2, 30, 40, 0, {"child:MOVE 1,2"}},
      {1, 2, 31, 40, 0, {"child:SIZE 31,40"}},
      {-5, 2, 50, 60, 0, {"child:MOVE -5,2", "child:SIZE 50,60"}},
      {-5, 2, 50, 60, 0, {}},
      {9, 9, 51, 60, SWP_NOMOVE, {"child:SIZE 51,60"}},
      {9, 9, 52, 60, SWP_NOSIZE, {"child:MOVE 9,9"}},
      {9, 9, -1, 60, SWP_NOMOVE, {"child:SIZE 0,60"}},
      {0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW, {"child:SHOWWINDOW 1"}},
      {0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW, {"child:SHOWWINDOW 0"}},
  };
  for (const auto& each : cases) {
    recording_.Take();
    EXPECT_TRUE(::SetWindowPos(child_, nullptr, each.x, each.y, each.width, each.height,
                               each.flags | SWP_NOZORDER | SWP_NOACTIVATE));
    EXPECT_EQ(recording_.Take(), each.told);
  }
}

TEST_F(WindowBounds, APointOfTheScreenIsOneOfTheWindow) {
  const std::tuple<HWND, LONG, LONG> cases[] = {
      {child_, 1, 2}, {parent_, 11, 22}, {::GetDesktopWindow(), 111, 72}};
  for (const auto& [window, x, y] : cases) {
    POINT point = {111, 72};
    EXPECT_TRUE(::ScreenToClient(window, &point));
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
  }
}

TEST_F(WindowBounds, ParentsOwnersAndChildrenAreNotified) {
  const HWND grandchild = Recording::Create(L"", child_, WS_CHILD);
  const HWND owned = Recording::Create(L"", parent_, WS_POPUP);
  EXPECT_EQ(::GetParent(grandchild), child_);
  EXPECT_EQ(::GetParent(owned), parent_);
  EXPECT_EQ(::GetParent(Recording::Create(L"", parent_, 0)), nullptr);
  EXPECT_EQ(::GetParent(parent_), nullptr);
  EXPECT_TRUE(::IsChild(parent_, grandchild));
  EXPECT_FALSE(::IsChild(grandchild, parent_));
  EXPECT_FALSE(::IsChild(parent_, parent_));
  EXPECT_FALSE(::IsChild(parent_, owned));
}

TEST_F(WindowBounds, TheScreensWindowIsNobodysToEndOrToWriteTo) {
  const HWND desktop = ::GetDesktopWindow();
  EXPECT_TRUE(::IsWindow(desktop));
  EXPECT_EQ(desktop, ::GetDesktopWindow());
  EXPECT_FALSE(::DestroyWindow(desktop));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_FALSE(::EnableWindow(desktop, FALSE));
  EXPECT_FALSE(::PostMessageW(desktop, WM_APP, 0, 0));
  EXPECT_EQ(::SendMessageW(desktop, WM_APP, 0, 0), 0);
  EXPECT_EQ(::GetParent(desktop), nullptr);
  EXPECT_NE(Recording::Create(L"", desktop), nullptr);
}

}  // namespace
