// The shape of the pointer.
#include <windows.h>

#include <gmock/gmock.h>

#include <QTest>

#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;

constexpr RECT kPlace = {60, 70, 260, 170};
constexpr RECT kChildPlace = {10, 20, 60, 50};

// A class of its own with that cursor, whose windows are told what the fixture's are.
HWND CreateWithCursor(LPCWSTR cursor, HWND parent) {
  WNDCLASSW shown{};
  ::GetClassInfoW(::GetModuleHandleW(nullptr), L"Shown0", &shown);
  shown.hCursor = ::LoadCursorW(nullptr, cursor);
  const std::wstring name =
      L"Cursor" + std::to_wstring(LOWORD(reinterpret_cast<ULONG_PTR>(cursor)));
  shown.lpszClassName = name.c_str();
  ::RegisterClassW(&shown);
  return ::CreateWindowExW(0, name.c_str(), L"", WS_CHILD | WS_VISIBLE, kChildPlace.left,
                           kChildPlace.top, 50, 30, parent, nullptr, nullptr, nullptr);
}

class PointerOnDesktop : public WindowOnDesktop {
 protected:
  static Qt::CursorShape ShapeOf(HWND window) { return WidgetOf(window)->cursor().shape(); }

  static void MoveOver(HWND window) {
    QTest::mouseMove(WidgetOf(window), {3, 4});
    PumpAll();
  }
};

TEST_F(PointerOnDesktop, AWindowIsAskedForTheShapeBeforeEachMessageOfTheMouse) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    PumpAll();
    std::vector<UINT> messages;
    On(WM_SETCURSOR, [&](HWND, WPARAM wParam, LPARAM lParam) -> LRESULT {
      messages.push_back(WM_SETCURSOR);
      messages.push_back(HIWORD(lParam));
      EXPECT_EQ(reinterpret_cast<HWND>(wParam), window);
      EXPECT_EQ(LOWORD(lParam), HTCLIENT);
      return TRUE;
    });
    On(WM_LBUTTONDOWN, [&](HWND, WPARAM, LPARAM) -> LRESULT {
      messages.push_back(WM_LBUTTONDOWN);
      return 0;
    });
    QTest::mousePress(WidgetOf(window), Qt::LeftButton, {}, {5, 6});
    MSG message{};
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_THAT(messages, ElementsAre()) << "asked before the message was taken";
    PumpAll();
    QTest::mouseRelease(WidgetOf(window), Qt::LeftButton, {}, {5, 6});
    EXPECT_THAT(messages, ElementsAre(WM_SETCURSOR, WM_LBUTTONDOWN, WM_LBUTTONDOWN));
  });
}

TEST_F(PointerOnDesktop, TheShapeIsThatOfTheClassUnlessTheParentSaysOtherwise) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = CreateWithCursor(IDC_CROSS, window);
    MoveOver(child);
    EXPECT_EQ(ShapeOf(child), Qt::CrossCursor);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_CROSS));
    On(WM_SETCURSOR, [&](HWND asked, WPARAM wParam, LPARAM lParam) -> LRESULT {
      if (asked != window) return ::DefWindowProcW(asked, WM_SETCURSOR, wParam, lParam);
      ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    });
    MoveOver(window);
    MoveOver(child);
    EXPECT_EQ(ShapeOf(child), Qt::WaitCursor);
  });
}

TEST_F(PointerOnDesktop, WhatAWindowSetsWhenTheMouseMovesIsShown) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND button = ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 100, 20, 50,
                                          30, window, nullptr, nullptr, nullptr);
    LPCWSTR wanted = IDC_SIZEWE;
    On(WM_MOUSEMOVE, [&](HWND, WPARAM, LPARAM) -> LRESULT {
      ::SetCursor(wanted != nullptr ? ::LoadCursorW(nullptr, wanted) : nullptr);
      return 0;
    });
    MoveOver(window);
    EXPECT_EQ(ShapeOf(window), Qt::SizeHorCursor);
    EXPECT_EQ(ShapeOf(button), Qt::ArrowCursor) << "controls have their own";
    wanted = IDC_SIZENS;
    QTest::mouseMove(WidgetOf(window), {5, 5});
    PumpAll();
    EXPECT_EQ(ShapeOf(window), Qt::SizeVerCursor);
    wanted = nullptr;
    MoveOver(window);
    EXPECT_EQ(ShapeOf(window), Qt::BlankCursor);
    ::SetCursor(::LoadCursorW(nullptr, IDC_HAND));
    EXPECT_EQ(ShapeOf(window), Qt::PointingHandCursor);
  });
}

}  // namespace
