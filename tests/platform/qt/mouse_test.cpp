// What the mouse does, as messages.
#include <windowsx.h>

#include "platform/qt/window_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The window, the message, what is down with it, and its place.
using Notified = std::tuple<HWND, UINT, WPARAM, int, int>;

class MouseOnDesktop : public NotingWindow<Notified> {
 protected:
  MouseOnDesktop() {
    for (UINT message = WM_MOUSEMOVE; message <= WM_MBUTTONDBLCLK; ++message) {
      Hear(message, [this, message](HWND window, WPARAM wParam, LPARAM lParam) {
        notified_.emplace_back(window, message, wParam, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
      });
    }
  }

  static void Press(HWND window, QPoint place, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers modifiers = {}) {
    QTest::mousePress(WidgetOf(window), button, modifiers, place);
  }
  static void Release(HWND window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(WidgetOf(window), button, {}, place);
  }
  static void Click(HWND window, QPoint place) {
    Press(window, place);
    Release(window, place);
  }
  // With a button down, as the toolkit tells it: to the widget where the button went down.
  static void Move(HWND window, QPoint place) { QTest::mouseMove(WidgetOf(window), place); }
};

TEST_F(MouseOnDesktop, ButtonsAreNotifiedWithTheirPlaceAndWhatIsDown) {
  WithWindow([this] {
    Press(window_, {5, 6}, Qt::LeftButton, Qt::ShiftModifier);
    Press(window_, {5, 6}, Qt::RightButton, Qt::ControlModifier);
    EXPECT_THAT(notified_, IsEmpty()) << "told inside the desktop's event";
    Release(window_, {7, 8}, Qt::LeftButton);
    Release(window_, {7, 8}, Qt::RightButton);
    QTest::mouseClick(WidgetOf(window_), Qt::MiddleButton, {}, {1, 2});
    EXPECT_THAT(Take(), ElementsAre(Notified{window_, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, 5, 6},
                                    Notified{window_, WM_RBUTTONDOWN,
                                             MK_LBUTTON | MK_RBUTTON | MK_CONTROL, 5, 6},
                                    Notified{window_, WM_LBUTTONUP, MK_RBUTTON, 7, 8},
                                    Notified{window_, WM_RBUTTONUP, 0, 7, 8},
                                    Notified{window_, WM_MBUTTONDOWN, MK_MBUTTON, 1, 2},
                                    Notified{window_, WM_MBUTTONUP, 0, 1, 2}));
  });
}

TEST_F(MouseOnDesktop, WhatWasPostedComesFirstAndFiltersHold) {
  WithWindow([this] {
    Press(window_, {5, 6});
    ::PostMessageW(window_, WM_APP, 0, 0);
    MSG message{};
    EXPECT_FALSE(::PeekMessageW(&message, window_, WM_KEYDOWN, WM_KEYUP, PM_REMOVE));
    EXPECT_TRUE(::PeekMessageW(&message, window_, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_APP);
    EXPECT_TRUE(::GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.message, WM_LBUTTONDOWN);
    EXPECT_EQ(message.hwnd, window_);
    EXPECT_EQ(message.pt.x, kPlace.left + 5);
    EXPECT_EQ(message.pt.y, kPlace.top + 6);
    EXPECT_NE(message.time, 0u);
    Release(window_, {5, 6});
  });
}

TEST_F(MouseOnDesktop, MovesThatWaitBecomeOneUnlessAButtonIsBetween) {
  WithWindow([this] {
    Press(window_, {1, 1});
    Move(window_, {2, 2});
    Move(window_, {3, 3});
    Press(window_, {3, 3}, Qt::RightButton);
    Move(window_, {4, 4});
    Move(window_, {5, 5});
    const std::vector<Notified> told = Take();
    Release(window_, {5, 5}, Qt::RightButton);
    Release(window_, {5, 5});
    EXPECT_THAT(told, ElementsAre(Notified{window_, WM_LBUTTONDOWN, MK_LBUTTON, 1, 1},
                                  Notified{window_, WM_MOUSEMOVE, MK_LBUTTON, 3, 3},
                                  Notified{window_, WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, 3, 3},
                                  Notified{window_, WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, 5, 5}));
  });
}

TEST_F(MouseOnDesktop, TheWindowUnderTheMouseIsNotifiedWhetherAButtonIsDownOrNot) {
  WithWindow([this] {
    const HWND child = CreateChild(window_);
    CreateButton(window_);
    Move(window_, {3, 4});
    Move(child, {1, 2});
    EXPECT_THAT(Take(), ElementsAre(Notified{window_, WM_MOUSEMOVE, 0, 3, 4},
                                    Notified{child, WM_MOUSEMOVE, 0, 1, 2}));
    Press(child, {5, 5});
    Move(child, {60, 7});     // in the parent
    Move(child, {95, 5});     // over the button
    Move(child, {-50, -70});  // outside of all windows
    Move(child, {6, 7});
    Release(child, {70, 8});
    EXPECT_THAT(Take(), ElementsAre(Notified{child, WM_LBUTTONDOWN, MK_LBUTTON, 5, 5},
                                    Notified{window_, WM_MOUSEMOVE, MK_LBUTTON, 70, 27},
                                    Notified{child, WM_MOUSEMOVE, MK_LBUTTON, 6, 7},
                                    Notified{window_, WM_LBUTTONUP, 0, 80, 28}));
  });
}

TEST_F(MouseOnDesktop, WhatIsDoneInADisabledWindowIsForTheOneAroundItAndOtherwiseLost) {
  WithWindow([this] {
    const HWND child = CreateChild(window_);
    const HWND inner = CreateChild(child, {5, 5, 20, 20});
    const HWND button = CreateButton(window_);
    ::EnableWindow(child, FALSE);
    ::EnableWindow(button, FALSE);
    for (const auto& [each, x, y] :
         {std::tuple{child, 13, 24}, {inner, 18, 29}, {button, 103, 24}}) {
      Click(each, {3, 4});
      EXPECT_THAT(Take(), ElementsAre(Notified{window_, WM_LBUTTONDOWN, MK_LBUTTON, x, y},
                                      Notified{window_, WM_LBUTTONUP, 0, x, y}));
    }
    const HWND ended = Create();
    PumpAll();
    Click(window_, {1, 2});
    Click(ended, {1, 2});
    ::DestroyWindow(ended);
    ::EnableWindow(window_, FALSE);
    Click(window_, {1, 2});
    Click(child, {1, 2});
    EXPECT_THAT(Take(), IsEmpty()) << "what they had not taken is lost, too";
  });
}

TEST_F(MouseOnDesktop, OnlyClassesThatAskForThemHaveDoubleClicks) {
  WithWindow([this] {
    const HWND asking = Create(WS_VISIBLE, kPlace, nullptr, {.classStyle = CS_DBLCLKS});
    PumpAll();
    for (const HWND each : {window_, asking}) {
      Click(each, {5, 6});
      QTest::mouseDClick(WidgetOf(each), Qt::LeftButton, {}, {5, 6});
      Release(each, {5, 6});
    }
    std::vector<UINT> messages;
    for (const Notified& each : Take())
      messages.push_back(std::get<UINT>(each));
    EXPECT_THAT(messages,
                ElementsAre(WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONUP,
                            WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP));
  });
}

TEST_F(MouseOnDesktop, AButtonIsKnownToBeDownAsLongAsItIs) {
  WithWindow([this] {
    const HWND button = CreateButton(window_);
    std::vector<bool> down;
    Hear(WM_LBUTTONDOWN, [&](HWND, WPARAM, LPARAM) {
      down = {::GetAsyncKeyState(VK_LBUTTON) < 0, ::GetKeyState(VK_LBUTTON) < 0};
    });
    Press(window_, {1, 1});
    PumpAll();
    EXPECT_THAT(down, ElementsAre(true, true));
    Release(window_, {1, 1});
    EXPECT_EQ(::GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_LT(::GetKeyState(VK_LBUTTON), 0) << "the message is still to come";
    PumpAll();
    EXPECT_EQ(::GetKeyState(VK_LBUTTON), 0);

    Click(window_, {1, 1});
    PumpAll();
    EXPECT_THAT(down, ElementsAre(false, true)) << "it was up when the window heard of it";

    Press(button, {3, 3});
    EXPECT_LT(::GetAsyncKeyState(VK_LBUTTON), 0) << "in a control of the system";
    Release(button, {3, 3});
    EXPECT_EQ(::GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_EQ(::GetSystemMetrics(SM_SWAPBUTTON), 0);
  });
}

TEST_F(MouseOnDesktop, AClickActivatesButLeavesTheKeyboardToTheProgram) {
  WithWindow([this] {
    const HWND child = CreateChild(window_);
    const HWND other = Create(WS_VISIBLE, {300, 70, 400, 170});
    PumpUntilActive(other);
    EXPECT_EQ(::GetActiveWindow(), other);
    Click(child, {5, 6});
    Pump([&] { return ::GetActiveWindow() == window_; });
    PumpAll();
    EXPECT_EQ(::GetFocus(), window_);
  });
}

}  // namespace
