#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/user/recording_window.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<LONG> Numbers(const RECT& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

class WindowPlace : public ::testing::Test {
 protected:
  void TearDown() override { ::DestroyWindow(parent_); }

  static HWND Create(const wchar_t* title, int x, int y, int width, int height, HWND parent,
                     DWORD style) {
    return ::CreateWindowExW(0, L"Recording", title, style, x, y, width, height, parent, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
  }
  static RECT OnScreen(HWND window) {
    RECT place{};
    EXPECT_TRUE(::GetWindowRect(window, &place));
    return place;
  }

  Recording recording_;
  HWND parent_ = Create(L"parent", 100, 50, 400, 300, nullptr, 0);
  HWND child_ = Create(L"child", 10, 20, 30, 40, parent_, WS_CHILD);
};

TEST_F(WindowPlace, AChildIsToldItsPlaceWhenItHasBeenMade) {
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("parent:NCCREATE", "parent:CREATE", "child:NCCREATE", "child:CREATE",
                          "child:SIZE 30,40", "child:MOVE 10,20"));
}

TEST_F(WindowPlace, AChildLiesInItsParentAndGoesWithIt) {
  EXPECT_THAT(Numbers(OnScreen(child_)), ElementsAre(110, 70, 140, 110));
  ::MoveWindow(parent_, 0, 1, 400, 300, FALSE);
  EXPECT_THAT(Numbers(OnScreen(child_)), ElementsAre(10, 21, 40, 61));
  RECT area{};
  EXPECT_TRUE(::GetClientRect(child_, &area));
  EXPECT_THAT(Numbers(area), ElementsAre(0, 0, 30, 40));
}

TEST_F(WindowPlace, OnlyWhatChangesIsTold) {
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
    recording_.Clear();
    EXPECT_TRUE(::SetWindowPos(child_, nullptr, each.x, each.y, each.width, each.height,
                               each.flags | SWP_NOZORDER | SWP_NOACTIVATE));
    EXPECT_EQ(recording_.Entries(), each.told);
  }
}

TEST_F(WindowPlace, WhatIsNotSupportedIsRefused) {
  recording_.Clear();
  EXPECT_FALSE(::SetWindowPos(child_, parent_, 1, 1, 1, 1, 0));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(::SetWindowPos(child_, nullptr, 1, 1, 1, 1, 0x8000));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_FLAGS);
  EXPECT_THAT(recording_.Entries(), IsEmpty());
}

TEST_F(WindowPlace, PointsAreMappedBetweenWindowsAndScreen) {
  POINT point = {1, 2};
  EXPECT_TRUE(::ClientToScreen(child_, &point));
  EXPECT_EQ(point.x, 111);
  EXPECT_EQ(point.y, 72);
  EXPECT_TRUE(::ScreenToClient(parent_, &point));
  EXPECT_EQ(point.x, 11);
  EXPECT_EQ(point.y, 22);
  RECT rect = {0, 0, 5, 5};
  const int shift = ::MapWindowPoints(child_, nullptr, reinterpret_cast<POINT*>(&rect), 2);
  EXPECT_EQ(LOWORD(shift), 110);
  EXPECT_EQ(HIWORD(shift), 70);
  EXPECT_THAT(Numbers(rect), ElementsAre(110, 70, 115, 75));
  ::MapWindowPoints(::GetDesktopWindow(), parent_, reinterpret_cast<POINT*>(&rect), 2);
  EXPECT_THAT(Numbers(rect), ElementsAre(10, 20, 15, 25));
}

TEST_F(WindowPlace, AStaleWindowHasNoPlace) {
  const HWND stale = Recording::Create();
  ::DestroyWindow(stale);
  RECT rect{};
  POINT point{};
  EXPECT_FALSE(::GetWindowRect(stale, &rect));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
  EXPECT_FALSE(::GetClientRect(stale, &rect));
  EXPECT_FALSE(::ScreenToClient(stale, &point));
  EXPECT_FALSE(::ScreenToClient(nullptr, &point));
  EXPECT_FALSE(::MoveWindow(stale, 0, 0, 0, 0, FALSE));
  EXPECT_EQ(::MapWindowPoints(stale, nullptr, &point, 1), 0);
  EXPECT_FALSE(::GetWindowRect(child_, nullptr));
  EXPECT_EQ(::GetLastError(), ERROR_NOACCESS);
}

TEST_F(WindowPlace, AWindowMayEndWhenItIsMoved) {
  recording_.On(WM_MOVE, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    ::DestroyWindow(window);
    return 0;
  });
  recording_.Clear();
  ::MoveWindow(child_, 1, 1, 1, 1, TRUE);
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("child:MOVE 1,1", "child:DESTROY", "child:NCDESTROY"));
}

TEST_F(WindowPlace, TheScreensWindowIsNobodysToEndOrToWriteTo) {
  const HWND desktop = ::GetDesktopWindow();
  EXPECT_TRUE(::IsWindow(desktop));
  EXPECT_EQ(desktop, ::GetDesktopWindow());
  EXPECT_FALSE(::DestroyWindow(desktop));
  EXPECT_EQ(::GetLastError(), ERROR_ACCESS_DENIED);
  EXPECT_FALSE(::PostMessageW(desktop, WM_APP, 0, 0));
  EXPECT_EQ(::SendMessageW(desktop, WM_APP, 0, 0), 0);
  EXPECT_EQ(::GetParent(desktop), nullptr);
  const HWND window = Recording::Create(L"", desktop);
  EXPECT_NE(window, nullptr);
  ::DestroyWindow(window);
}

TEST_F(WindowPlace, ParentsOwnersAndChildrenAreTold) {
  const HWND grandchild = Recording::Create(L"", child_, WS_CHILD);
  const HWND owned = Recording::Create(L"", parent_, WS_POPUP);
  const HWND overlapped = Recording::Create(L"", parent_, 0);
  EXPECT_EQ(::GetParent(grandchild), child_);
  EXPECT_EQ(::GetParent(owned), parent_);
  EXPECT_EQ(::GetParent(overlapped), nullptr);
  EXPECT_EQ(::GetParent(parent_), nullptr);
  EXPECT_TRUE(::IsChild(parent_, grandchild));
  EXPECT_FALSE(::IsChild(grandchild, parent_));
  EXPECT_FALSE(::IsChild(parent_, parent_));
  EXPECT_FALSE(::IsChild(parent_, owned));
}

}  // namespace
