// The shape of the pointer.
#include "platform/qt/window_fixture.h"

namespace {

using ::testing::ElementsAre;

class PointerOnDesktop : public WindowOnDesktop {
 protected:
  static Qt::CursorShape ShapeOf(HWND window) { return WidgetOf(window)->cursor().shape(); }
  // What it is when the mouse has moved there.
  static Qt::CursorShape ShapeOver(HWND window, QPoint place = {3, 4}) {
    QTest::mouseMove(WidgetOf(window), place);
    PumpAll();
    return ShapeOf(window);
  }
};

TEST_F(PointerOnDesktop, AWindowIsAskedForTheShapeBeforeEachMessageOfTheMouse) {
  WithWindow([this] {
    std::vector<UINT> messages;
    On(WM_SETCURSOR, [&](HWND, WPARAM wParam, LPARAM lParam) -> LRESULT {
      messages.insert(messages.end(), {WM_SETCURSOR, HIWORD(lParam)});
      EXPECT_EQ(reinterpret_cast<HWND>(wParam), window_);
      EXPECT_EQ(LOWORD(lParam), HTCLIENT);
      return TRUE;
    });
    Hear(WM_LBUTTONDOWN, [&](HWND, WPARAM, LPARAM) { messages.push_back(WM_LBUTTONDOWN); });
    QTest::mousePress(WidgetOf(window_), Qt::LeftButton, {}, {5, 6});
    MSG message{};
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_TRUE(messages.empty()) << "asked before the message was taken";
    PumpAll();
    QTest::mouseRelease(WidgetOf(window_), Qt::LeftButton, {}, {5, 6});
    EXPECT_THAT(messages, ElementsAre(WM_SETCURSOR, WM_LBUTTONDOWN, WM_LBUTTONDOWN));
  });
}

TEST_F(PointerOnDesktop, TheShapeIsThatOfTheClassUnlessTheParentSaysOtherwise) {
  WithWindow([this] {
    const HWND child = CreateChild(window_, kChildBounds, {.cursor = IDC_CROSS});
    EXPECT_EQ(ShapeOver(child), Qt::CrossCursor);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_CROSS));
    On(WM_SETCURSOR, [&](HWND asked, WPARAM wParam, LPARAM lParam) -> LRESULT {
      if (asked != window_) return ::DefWindowProcW(asked, WM_SETCURSOR, wParam, lParam);
      ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    });
    ShapeOver(window_);
    EXPECT_EQ(ShapeOver(child), Qt::WaitCursor);
  });
}

TEST_F(PointerOnDesktop, WhatAWindowSetsWhenTheMouseMovesIsShown) {
  WithWindow([this] {
    const HWND button = CreateButton(window_);
    HCURSOR wanted = ::LoadCursorW(nullptr, IDC_SIZEWE);
    Hear(WM_MOUSEMOVE, [&](HWND, WPARAM, LPARAM) { ::SetCursor(wanted); });
    EXPECT_EQ(ShapeOver(window_), Qt::SizeHorCursor);
    EXPECT_EQ(ShapeOf(button), Qt::ArrowCursor) << "controls have their own";
    wanted = ::LoadCursorW(nullptr, IDC_SIZENS);
    EXPECT_EQ(ShapeOver(window_, {5, 5}), Qt::SizeVerCursor);
    wanted = nullptr;
    EXPECT_EQ(ShapeOver(window_), Qt::BlankCursor);
    ::SetCursor(::LoadCursorW(nullptr, IDC_HAND));
    EXPECT_EQ(ShapeOf(window_), Qt::PointingHandCursor);
  });
}

}  // namespace
