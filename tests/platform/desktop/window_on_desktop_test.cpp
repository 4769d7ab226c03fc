#include <windows.h>

#include <gmock/gmock.h>

#include <QApplication>
#include <QScreen>
#include <QTest>

#include "platform/desktop/window_fixture.h"
#include "platform/kernel/handle_table.h"

namespace {

using ::testing::ElementsAre;

constexpr RECT kPlace = {60, 70, 260, 170};
constexpr RECT kChildPlace = {10, 20, 60, 50};

TEST_F(WindowOnDesktop, AWindowAndItsChildAreWhereTheyWerePut) {
  OnWindowThread([] {
    const HWND window = Create(L"A title", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window, 1056);
    QWidget* widget = WidgetOf(window);
    ASSERT_NE(widget, nullptr);
    EXPECT_TRUE(widget->isVisible());
    EXPECT_EQ(widget->windowTitle(), "A title");
    EXPECT_EQ(widget->geometry(), QRect(60, 70, 200, 100));
    QWidget* inner = widget->findChild<QWidget*>("1056");
    ASSERT_EQ(inner, WidgetOf(child));
    EXPECT_TRUE(inner->isVisible());
    EXPECT_EQ(inner->geometry(), QRect(10, 20, 50, 30));
    ::MoveWindow(window, 60, 70, 32'767, 32'767, TRUE);
    EXPECT_EQ(widget->size(), widget->screen()->virtualSize()) << "it would need 4 GB";
    ::MoveWindow(child, 1, 2, 3, 4, TRUE);
    EXPECT_EQ(inner->geometry(), QRect(1, 2, 3, 4));
    ::SetWindowTextW(window, L"Another");
    EXPECT_EQ(widget->windowTitle(), "Another");
    ::ShowWindow(window, SW_HIDE);
    EXPECT_FALSE(widget->isVisible());
    EXPECT_FALSE(inner->isVisible());
  });
}

TEST_F(WindowOnDesktop, WhereTheUserPutsAWindowIsTold) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    PumpAll();
    std::vector<LPARAM> told;
    On(WM_MOVE, [&](HWND, WPARAM, LPARAM lParam) -> LRESULT {
      told.push_back(lParam);
      return 0;
    });
    On(WM_SIZE, [&](HWND, WPARAM, LPARAM lParam) -> LRESULT {
      told.push_back(lParam);
      return 0;
    });
    WidgetOf(window)->setGeometry(5, 6, 200, 100);
    WidgetOf(window)->setGeometry(5, 6, 210, 110);
    EXPECT_TRUE(told.empty()) << "told inside the desktop's event";
    Pump([&] { return told.size() == 2; });
    EXPECT_THAT(told, ElementsAre(MAKELPARAM(5, 6), MAKELPARAM(210, 110)));
    RECT place{};
    ::GetWindowRect(window, &place);
    EXPECT_EQ(place.left, 5);
    EXPECT_EQ(place.right, 215);
  });
}

TEST_F(WindowOnDesktop, ADisabledWindowTakesNoInputAndLooksTheSame) {
  OnWindowThread([] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND button =
        ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 10, 10, 80, 24, window,
                          reinterpret_cast<HMENU>(UINT_PTR{7}), nullptr, nullptr);
    auto* widget = WidgetOf(button);
    ASSERT_NE(widget, nullptr);
    ::EnableWindow(button, FALSE);
    EXPECT_FALSE(widget->isEnabled());
    ::EnableWindow(button, TRUE);
    EXPECT_TRUE(widget->isEnabled());
    ::EnableWindow(window, FALSE);
    EXPECT_TRUE(widget->isEnabled());
    EXPECT_FALSE(WidgetOf(window)->close());
  });
}

TEST_F(WindowOnDesktop, ClicksReachTheParentOfAButtonUnlessItIsDisabled) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND button =
        ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 10, 10, 80, 24, window,
                          reinterpret_cast<HMENU>(UINT_PTR{7}), nullptr, nullptr);
    QWidget* widget = WidgetOf(button);
    ASSERT_NE(widget, nullptr);
    ::EnableWindow(window, FALSE);
    QTest::mouseClick(widget, Qt::LeftButton);
    QTest::keyClick(widget, Qt::Key_Space);
    PumpAll();
    EXPECT_EQ(CountOf(WM_COMMAND), 0);
    ::EnableWindow(window, TRUE);
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_EQ(CountOf(WM_COMMAND), 0) << "told inside the desktop's event";
    Pump([&] { return CountOf(WM_COMMAND) == 1; });
  });
}

TEST_F(WindowOnDesktop, WhatTheUserDoesArrivesWhateverMessageIsWaitedFor) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND other = Create(L"", kPlace, 0);
    const HWND button = ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 10, 10, 80,
                                          24, window, nullptr, nullptr, nullptr);
    QTest::mouseClick(WidgetOf(button), Qt::LeftButton);
    MSG message{};
    EXPECT_FALSE(::PeekMessageW(&message, other, WM_APP, WM_APP, PM_REMOVE));
    EXPECT_EQ(CountOf(WM_COMMAND), 1);
    ::PostMessageW(other, WM_APP, 0, 0);
    QTest::mouseClick(WidgetOf(button), Qt::LeftButton);
    EXPECT_TRUE(::GetMessageW(&message, other, WM_APP, WM_APP));
    EXPECT_EQ(CountOf(WM_COMMAND), 2);
  });
}

TEST_F(WindowOnDesktop, AHiddenWindowInFrontGivesWayToTheOneTheUserIsIn) {
  OnWindowThread([] {
    const HWND hidden = Create(L"", kPlace, 0);
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window);
    Pump([&] { return QApplication::activeWindow() == WidgetOf(window); });
    PumpAll();
    EXPECT_TRUE(::SetForegroundWindow(hidden));
    EXPECT_EQ(::GetActiveWindow(), hidden);
    WidgetOf(child)->setFocus();
    Pump([&] { return ::GetFocus() == child; });
    EXPECT_EQ(::GetActiveWindow(), window);
  });
}

TEST_F(WindowOnDesktop, TheKeyboardIsWhereTheUserAndTheProgramPutIt) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND first = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window, 1);
    const HWND second = Create(L"", {70, 20, 120, 50}, WS_CHILD | WS_VISIBLE, window, 2);
    Pump([&] { return QApplication::activeWindow() == WidgetOf(window); });
    PumpAll();
    EXPECT_EQ(::GetActiveWindow(), window);
    EXPECT_EQ(::GetFocus(), window);
    ::SetFocus(first);
    EXPECT_EQ(QApplication::focusWidget(), WidgetOf(first));
    PumpAll();
    std::vector<std::pair<HWND, HWND>> lost;
    On(WM_KILLFOCUS, [&](HWND who, WPARAM wParam, LPARAM) -> LRESULT {
      lost.emplace_back(who, reinterpret_cast<HWND>(wParam));
      return 0;
    });
    WidgetOf(second)->setFocus();
    Pump([&] { return ::GetFocus() == second; });
    EXPECT_THAT(lost, ElementsAre(std::pair(first, second)));
  });
}

TEST_F(WindowOnDesktop, WhenADialogGoesItsOwnerHasTheKeyboardAgain) {
  OnWindowThread([] {
    const HWND owner = Create(L"owner", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, owner);
    Pump([&] { return QApplication::activeWindow() == WidgetOf(owner); });
    ::SetFocus(child);
    const HWND owned = Create(L"owned", kPlace, WS_VISIBLE, owner);
    Pump([&] { return QApplication::activeWindow() == WidgetOf(owned); });
    PumpAll();
    EXPECT_EQ(::GetActiveWindow(), owned);
    ::DestroyWindow(owned);
    EXPECT_EQ(::GetActiveWindow(), owner);
    Pump([&] { return QApplication::activeWindow() == WidgetOf(owner); });
    PumpAll();
    EXPECT_EQ(QApplication::focusWidget(), WidgetOf(::GetFocus()));
  });
}

TEST_F(WindowOnDesktop, AWindowMayEndInAnyMessageOfTheUsers) {
  OnWindowThread([this] {
    const auto destroyTop = [](HWND window, WPARAM, LPARAM) -> LRESULT {
      return ::DestroyWindow(window);
    };
    const HWND closed = Create(L"", kPlace, WS_VISIBLE);
    On(WM_CLOSE, destroyTop);
    EXPECT_FALSE(WidgetOf(closed)->close());
    EXPECT_TRUE(::IsWindow(closed));
    Pump([&] { return !::IsWindow(closed); });

    const HWND parent = Create(L"", kPlace, WS_VISIBLE);
    On(WM_COMMAND, destroyTop);
    const HWND button = ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 10, 10, 80,
                                          24, parent, nullptr, nullptr, nullptr);
    QTest::mouseClick(WidgetOf(button), Qt::LeftButton);
    Pump([&] { return !::IsWindow(parent); });

    On(WM_PAINT, [](HWND window, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT paint;
      const HDC context = ::BeginPaint(window, &paint);
      ::DestroyWindow(window);
      // Whatever a procedure still does with them.
      ::TextOutW(context, 0, 0, L"x", 1);
      ::EndPaint(window, &paint);
      return 0;
    });
    const HWND painted = Create(L"", kPlace, WS_VISIBLE);
    Pump([&] { return !::IsWindow(painted); });
    PumpAll();
    EXPECT_TRUE(QApplication::allWidgets().isEmpty());
  });
}

TEST_F(WindowOnDesktop, ManyWindowsLeaveNothingBehind) {
  OnWindowThread([] {
    const HWND owner = Create(L"", kPlace, WS_VISIBLE);
    PumpAll();
    const std::size_t handles = platform::Handles().Count();
    const auto widgets = QApplication::allWidgets().size();
    for (int turn = 0; turn < 1'000; ++turn) {
      const HWND window = Create(L"", kPlace, turn % 100 == 0 ? WS_VISIBLE : 0, owner);
      Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window);
      ::DestroyWindow(window);
      if (turn % 10 == 0) PumpAll();
    }
    PumpAll();
    EXPECT_EQ(platform::Handles().Count(), handles);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
  });
}

TEST_F(WindowOnDesktop, TheScreenAndTheMouseAreKnown) {
  OnWindowThread([] {
    Create(L"", kPlace, 0);
    const int width = ::GetSystemMetrics(SM_CXSCREEN);
    EXPECT_GT(width, 0);
    RECT screen{};
    EXPECT_TRUE(::GetWindowRect(::GetDesktopWindow(), &screen));
    EXPECT_EQ(screen.right, width);
    EXPECT_EQ(screen.bottom, ::GetSystemMetrics(SM_CYSCREEN));
    POINT place = {-1, -1};
    EXPECT_TRUE(::GetCursorPos(&place));
    EXPECT_EQ(place.x, QCursor::pos().x());
    const HWND anywhere = ::CreateWindowExW(0, L"Shown0", L"", 0, CW_USEDEFAULT, 0, CW_USEDEFAULT,
                                            0, nullptr, nullptr, nullptr, nullptr);
    RECT chosen{};
    EXPECT_TRUE(::GetWindowRect(anywhere, &chosen));
    EXPECT_GT(chosen.right, chosen.left);
    EXPECT_LE(chosen.right, screen.right);
  });
}

TEST_F(WindowOnDesktop, F1AsksTheWindowWithTheKeyboardForHelp) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window, 33);
    HELPINFO seen{};
    On(WM_HELP, [&](HWND, WPARAM, LPARAM lParam) -> LRESULT {
      seen = *reinterpret_cast<const HELPINFO*>(lParam);
      return TRUE;
    });
    QTest::keyClick(WidgetOf(child), Qt::Key_F1);
    Pump([&] { return CountOf(WM_HELP) == 1; });
    EXPECT_EQ(seen.iCtrlId, 33);
    EXPECT_EQ(seen.hItemHandle, child);
  });
}

}  // namespace
