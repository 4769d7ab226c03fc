#include <QScreen>

#include "platform/kernel/handle_table.h"
#include "platform/qt/window_fixture.h"

namespace {

using ::testing::ElementsAre;

TEST_F(WindowOnDesktop, AWindowAndItsChildAreWhereTheyWerePut) {
  WithWindow([this] {
    const HWND child = CreateChild(window_, kChildBounds, {.id = 1056});
    QWidget* widget = WidgetOf(window_);
    ASSERT_NE(widget, nullptr);
    EXPECT_TRUE(widget->isVisible());
    EXPECT_EQ(widget->geometry(), QRect(60, 70, 200, 100));
    const QWidget* inner = widget->findChild<QWidget*>("1056");
    ASSERT_EQ(inner, WidgetOf(child));
    EXPECT_TRUE(inner->isVisible());
    EXPECT_EQ(inner->geometry(), QRect(10, 20, 50, 30));
    ::MoveWindow(window_, 60, 70, 32'767, 32'767, TRUE);
    EXPECT_EQ(widget->size(), widget->screen()->virtualSize()) << "it would need 4 GB";
    ::MoveWindow(child, 1, 2, 3, 4, TRUE);
    EXPECT_EQ(inner->geometry(), QRect(1, 2, 3, 4));
    ::SetWindowTextW(window_, L"Another");
    EXPECT_EQ(widget->windowTitle(), "Another");
    ::ShowWindow(window_, SW_HIDE);
    EXPECT_FALSE(widget->isVisible());
    EXPECT_FALSE(inner->isVisible());
  });
}

TEST_F(WindowOnDesktop, WhereTheUserPutsAWindowIsNotified) {
  WithWindow([this] {
    std::vector<LPARAM> told;
    for (const UINT message : {WM_MOVE, WM_SIZE})
      Hear(message, [&](HWND, WPARAM, LPARAM lParam) { told.push_back(lParam); });
    WidgetOf(window_)->setGeometry(5, 6, 200, 100);
    WidgetOf(window_)->setGeometry(5, 6, 210, 110);
    EXPECT_TRUE(told.empty()) << "told inside the desktop's event";
    Pump([&] { return told.size() == 2; });
    EXPECT_THAT(told, ElementsAre(MAKELPARAM(5, 6), MAKELPARAM(210, 110)));
    EXPECT_THAT(EdgesOf(PlaceOf(window_)), ElementsAre(5, 6, 215, 116));
  });
}

TEST_F(WindowOnDesktop, ADisabledWindowTakesNoInputAndLooksTheSame) {
  WithWindow([this] {
    QWidget* button = WidgetOf(CreateButton(window_));
    ::EnableWindow(window_, FALSE);
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(WidgetOf(window_)->close());
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::keyClick(button, Qt::Key_Space);
    PumpAll();
    EXPECT_EQ(CountOf(WM_COMMAND), 0);
    ::EnableWindow(window_, TRUE);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(CountOf(WM_COMMAND), 0) << "told inside the desktop's event";
    Pump([&] { return CountOf(WM_COMMAND) == 1; });
  });
}

TEST_F(WindowOnDesktop, WhatTheUserDoesArrivesWhateverMessageIsWaitedFor) {
  WithWindow([this] {
    QWidget* button = WidgetOf(CreateButton(window_));
    const HWND other = Create(0);
    QTest::mouseClick(button, Qt::LeftButton);
    MSG message{};
    EXPECT_FALSE(::PeekMessageW(&message, other, WM_APP, WM_APP, PM_REMOVE));
    EXPECT_EQ(CountOf(WM_COMMAND), 1);
    ::PostMessageW(other, WM_APP, 0, 0);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(::GetMessageW(&message, other, WM_APP, WM_APP));
    EXPECT_EQ(CountOf(WM_COMMAND), 2);
  });
}

TEST_F(WindowOnDesktop, TheFocusIsWhereTheUserAndTheProgramPutItAndComesBackFromADialog) {
  WithWindow([this] {
    const HWND first = CreateChild(window_);
    const HWND second = CreateChild(window_, {70, 20, 120, 50});
    EXPECT_EQ(::GetActiveWindow(), window_);
    EXPECT_EQ(::GetFocus(), window_);
    ::SetFocus(first);
    EXPECT_EQ(QApplication::focusWidget(), WidgetOf(first));
    PumpAll();
    std::vector<std::pair<HWND, HWND>> lost;
    Hear(WM_KILLFOCUS, [&](HWND who, WPARAM wParam, LPARAM) {
      lost.emplace_back(who, reinterpret_cast<HWND>(wParam));
    });
    WidgetOf(second)->setFocus();
    Pump([&] { return ::GetFocus() == second; });
    EXPECT_THAT(lost, ElementsAre(std::pair(first, second)));
    // A hidden window in front gives way to the one that the user is in.
    const HWND hidden = Create(0);
    EXPECT_TRUE(::SetForegroundWindow(hidden));
    EXPECT_EQ(::GetActiveWindow(), hidden);
    WidgetOf(first)->setFocus();
    Pump([&] { return ::GetFocus() == first; });
    EXPECT_EQ(::GetActiveWindow(), window_);

    const HWND owned = Create(WS_VISIBLE, kPlace, window_);
    PumpUntilActive(owned);
    EXPECT_EQ(::GetActiveWindow(), owned);
    ::DestroyWindow(owned);
    EXPECT_EQ(::GetActiveWindow(), window_);
    PumpUntilActive(window_);
    EXPECT_EQ(QApplication::focusWidget(), WidgetOf(::GetFocus()));
    QApplication::setActiveWindow(nullptr);  // the user goes to another program
    Pump([] { return ::GetActiveWindow() == nullptr && ::GetFocus() == nullptr; });
  });
}

TEST_F(WindowOnDesktop, AWindowMayEndInAnyMessageOfTheUsers) {
  OnWindowThread([this] {
    for (const UINT message : {WM_CLOSE, WM_COMMAND})
      On(message, [](HWND window, WPARAM, LPARAM) -> LRESULT { return ::DestroyWindow(window); });
    const HWND closed = Create();
    EXPECT_FALSE(WidgetOf(closed)->close());
    EXPECT_TRUE(::IsWindow(closed));
    Pump([&] { return !::IsWindow(closed); });
    const HWND parent = Create();
    QTest::mouseClick(WidgetOf(CreateButton(parent)), Qt::LeftButton);
    Pump([&] { return !::IsWindow(parent); });
    PumpAll();
    EXPECT_TRUE(QApplication::allWidgets().isEmpty());
  });
}

TEST_F(WindowOnDesktop, ManyWindowsLeaveNothingBehind) {
  WithWindow([this] {
    const auto makeAndEnd = [this](int turn) {
      const HWND owned = Create(turn % 100 == 0 ? WS_VISIBLE : 0, kPlace, window_);
      CreateChild(owned);
      ::DestroyWindow(owned);
      if (turn % 10 == 0) PumpAll();
    };
    makeAndEnd(0);  // with what all share
    const std::size_t handles = platform::Handles().Count();
    const auto widgets = QApplication::allWidgets().size();
    for (int turn = 1; turn <= 1'000; ++turn)
      makeAndEnd(turn);
    EXPECT_EQ(platform::Handles().Count(), handles);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
  });
}

TEST_F(WindowOnDesktop, TheScreenTheMouseAndTheSpeakerAreThere) {
  OnWindowThread([] {
    const HWND anywhere = ::CreateWindowExW(0, L"Static", L"", 0, CW_USEDEFAULT, 0, CW_USEDEFAULT,
                                            0, nullptr, nullptr, nullptr, nullptr);
    const RECT screen = PlaceOf(::GetDesktopWindow());
    EXPECT_GT(screen.right, 0);
    EXPECT_EQ(screen.right, ::GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(screen.bottom, ::GetSystemMetrics(SM_CYSCREEN));
    POINT place = {-1, -1};
    EXPECT_TRUE(::GetCursorPos(&place));
    EXPECT_EQ(place.x, QCursor::pos().x());
    const RECT chosen = PlaceOf(anywhere);
    EXPECT_GT(chosen.right, chosen.left);
    EXPECT_LE(chosen.right, screen.right);
    EXPECT_TRUE(::MessageBeep(0));
    PumpAll();
  });
}

}  // namespace
