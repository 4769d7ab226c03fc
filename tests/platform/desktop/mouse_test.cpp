// What the mouse does, as messages.
#include <windows.h>

#include <gmock/gmock.h>
#include <windowsx.h>

#include <QApplication>
#include <QTest>

#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr RECT kPlace = {60, 70, 260, 170};
constexpr RECT kChildPlace = {10, 20, 60, 50};

struct Told {
  HWND window;
  UINT message;
  WPARAM keys;
  int x;
  int y;
  bool operator==(const Told&) const = default;
};

void PrintTo(const Told& told, std::ostream* stream) {
  *stream << "window " << told.window << " message " << std::hex << told.message << " keys "
          << told.keys << std::dec << " at " << told.x << "," << told.y;
}

// A class of its own, whose windows are told what the fixture's are.
HWND CreateForDoubleClicks(RECT place) {
  WNDCLASSW shown{};
  ::GetClassInfoW(::GetModuleHandleW(nullptr), L"Shown0", &shown);
  shown.style = CS_DBLCLKS;
  shown.lpszClassName = L"DoubleClicks";
  ::RegisterClassW(&shown);
  return ::CreateWindowExW(0, L"DoubleClicks", L"", WS_VISIBLE, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, nullptr, nullptr,
                           nullptr, nullptr);
}

HWND CreateButton(HWND parent, RECT place) {
  return ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr,
                           nullptr, nullptr);
}

class MouseOnDesktop : public WindowOnDesktop {
 protected:
  MouseOnDesktop() {
    for (UINT message = WM_MOUSEMOVE; message <= WM_MBUTTONDBLCLK; ++message)
      Record(message);
  }
  void Record(UINT message) {
    On(message, [this, message](HWND window, WPARAM wParam, LPARAM lParam) -> LRESULT {
      told_.push_back({window, message, wParam, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return 0;
    });
  }
  // What has been told since the last time.
  std::vector<Told> Take() {
    PumpAll();
    return std::exchange(told_, {});
  }

  static void Press(HWND window, QPoint place, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(WidgetOf(window), button, modifiers, place);
  }

  static void Release(HWND window, QPoint place, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseRelease(WidgetOf(window), button, modifiers, place);
  }

  // With a button down, as the toolkit tells it: to the widget where the button went down.
  static void Drag(HWND window, QPoint place) { QTest::mouseMove(WidgetOf(window), place); }

  std::vector<Told> told_;
};

TEST_F(MouseOnDesktop, ButtonsAreToldWithTheirPlaceAndWhatIsDown) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    Take();
    Press(window, {5, 6}, Qt::LeftButton, Qt::ShiftModifier);
    Press(window, {5, 6}, Qt::RightButton, Qt::ControlModifier);
    EXPECT_THAT(told_, IsEmpty()) << "told inside the desktop's event";
    Release(window, {7, 8}, Qt::LeftButton);
    Release(window, {7, 8}, Qt::RightButton);
    QTest::mouseClick(WidgetOf(window), Qt::MiddleButton, {}, {1, 2});
    EXPECT_THAT(
        Take(),
        ElementsAre(
            Told{window, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, 5, 6},
            Told{window, WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON | MK_CONTROL, 5, 6},
            Told{window, WM_LBUTTONUP, MK_RBUTTON, 7, 8}, Told{window, WM_RBUTTONUP, 0, 7, 8},
            Told{window, WM_MBUTTONDOWN, MK_MBUTTON, 1, 2}, Told{window, WM_MBUTTONUP, 0, 1, 2}));
  });
}

TEST_F(MouseOnDesktop, TheMouseMovesWithoutAButtonToo) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window);
    Take();
    QTest::mouseMove(WidgetOf(window), {3, 4});
    QTest::mouseMove(WidgetOf(child), {1, 2});
    EXPECT_THAT(Take(), ElementsAre(Told{window, WM_MOUSEMOVE, 0, 3, 4},
                                    Told{child, WM_MOUSEMOVE, 0, 1, 2}));
  });
}

TEST_F(MouseOnDesktop, WhatWasPostedComesFirstAndFiltersHold) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    Take();
    Press(window, {5, 6});
    ::PostMessageW(window, WM_APP, 0, 0);
    MSG message{};
    EXPECT_FALSE(::PeekMessageW(&message, window, WM_KEYDOWN, WM_KEYUP, PM_REMOVE));
    EXPECT_TRUE(::PeekMessageW(&message, window, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
    EXPECT_EQ(message.message, WM_LBUTTONDOWN);
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_APP);
    EXPECT_TRUE(::GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.message, WM_LBUTTONDOWN);
    EXPECT_EQ(message.hwnd, window);
    EXPECT_EQ(message.pt.x, kPlace.left + 5);
    EXPECT_EQ(message.pt.y, kPlace.top + 6);
    EXPECT_NE(message.time, 0u);
    Release(window, {5, 6});
  });
}

TEST_F(MouseOnDesktop, MovesThatWaitBecomeOneUnlessAButtonIsBetween) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    Take();
    Press(window, {1, 1});
    Drag(window, {2, 2});
    Drag(window, {3, 3});
    Press(window, {3, 3}, Qt::RightButton);
    Drag(window, {4, 4});
    Drag(window, {5, 5});
    const std::vector<Told> told = Take();
    Release(window, {5, 5}, Qt::RightButton);
    Release(window, {5, 5});
    EXPECT_THAT(told, ElementsAre(Told{window, WM_LBUTTONDOWN, MK_LBUTTON, 1, 1},
                                  Told{window, WM_MOUSEMOVE, MK_LBUTTON, 3, 3},
                                  Told{window, WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, 3, 3},
                                  Told{window, WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, 5, 5}));
  });
}

TEST_F(MouseOnDesktop, AWindowDoesNotKeepTheMouseWhileAButtonIsDown) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window);
    const HWND button = CreateButton(window, {100, 20, 150, 50});
    Take();
    Press(child, {5, 5});
    Drag(child, {60, 7});     // in the parent
    Drag(child, {95, 5});     // over the button
    Drag(child, {-50, -70});  // outside of all windows
    Drag(child, {6, 7});
    Release(child, {70, 8});
    EXPECT_THAT(Take(), ElementsAre(Told{child, WM_LBUTTONDOWN, MK_LBUTTON, 5, 5},
                                    Told{window, WM_MOUSEMOVE, MK_LBUTTON, 70, 27},
                                    Told{child, WM_MOUSEMOVE, MK_LBUTTON, 6, 7},
                                    Told{window, WM_LBUTTONUP, 0, 80, 28}));
    EXPECT_TRUE(::IsWindow(button));
  });
}

TEST_F(MouseOnDesktop, WhatIsDoneInADisabledWindowIsForTheOneAroundIt) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE | WS_DISABLED, window);
    const HWND inner = Create(L"", {5, 5, 20, 20}, WS_CHILD | WS_VISIBLE, child);
    const HWND button = CreateButton(window, {100, 20, 150, 50});
    ::EnableWindow(button, FALSE);
    Take();
    for (const HWND each : {child, inner, button}) {
      Press(each, {3, 4});
      Release(each, {3, 4});
    }
    EXPECT_THAT(Take(), ElementsAre(Told{window, WM_LBUTTONDOWN, MK_LBUTTON, 13, 24},
                                    Told{window, WM_LBUTTONUP, 0, 13, 24},
                                    Told{window, WM_LBUTTONDOWN, MK_LBUTTON, 18, 29},
                                    Told{window, WM_LBUTTONUP, 0, 18, 29},
                                    Told{window, WM_LBUTTONDOWN, MK_LBUTTON, 103, 24},
                                    Told{window, WM_LBUTTONUP, 0, 103, 24}));
    ::EnableWindow(window, FALSE);
    QTest::mouseClick(WidgetOf(window), Qt::LeftButton, {}, {1, 2});
    QTest::mouseClick(WidgetOf(child), Qt::LeftButton, {}, {1, 2});
    EXPECT_THAT(Take(), IsEmpty());
  });
}

TEST_F(MouseOnDesktop, WhatAnEndedOrDisabledWindowHasNotTakenIsLost) {
  OnWindowThread([this] {
    const HWND ended = Create(L"", kPlace, WS_VISIBLE);
    const HWND disabled = Create(L"", kPlace, WS_VISIBLE);
    Take();
    QTest::mouseClick(WidgetOf(ended), Qt::LeftButton, {}, {1, 2});
    QTest::mouseClick(WidgetOf(disabled), Qt::LeftButton, {}, {1, 2});
    ::DestroyWindow(ended);
    ::EnableWindow(disabled, FALSE);
    EXPECT_THAT(Take(), IsEmpty());
  });
}

TEST_F(MouseOnDesktop, OnlyClassesThatAskForThemHaveDoubleClicks) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND asking = CreateForDoubleClicks(kPlace);
    Take();
    for (const HWND each : {window, asking}) {
      QTest::mouseClick(WidgetOf(each), Qt::LeftButton, {}, {5, 6});
      QTest::mouseDClick(WidgetOf(each), Qt::LeftButton, {}, {5, 6});
      Release(each, {5, 6});
    }
    std::vector<UINT> messages;
    for (const Told& each : Take())
      messages.push_back(each.message);
    EXPECT_THAT(messages,
                ElementsAre(WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONUP,
                            WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP));
  });
}

TEST_F(MouseOnDesktop, AButtonIsKnownToBeDownAsLongAsItIs) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND button = CreateButton(window, kChildPlace);
    std::vector<bool> down;
    On(WM_LBUTTONDOWN, [&](HWND, WPARAM, LPARAM) -> LRESULT {
      down.push_back(::GetAsyncKeyState(VK_LBUTTON) < 0);
      down.push_back(::GetKeyState(VK_LBUTTON) < 0);
      return 0;
    });
    Press(window, {1, 1});
    PumpAll();
    EXPECT_THAT(down, ElementsAre(true, true));
    Release(window, {1, 1});
    EXPECT_EQ(::GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_LT(::GetKeyState(VK_LBUTTON), 0) << "the message is still to come";
    PumpAll();
    EXPECT_EQ(::GetKeyState(VK_LBUTTON), 0);

    // It is up when the window comes to hear of its going down.
    down.clear();
    QTest::mouseClick(WidgetOf(window), Qt::LeftButton, {}, {1, 1});
    PumpAll();
    EXPECT_THAT(down, ElementsAre(false, true));

    Press(button, {3, 3});
    EXPECT_LT(::GetAsyncKeyState(VK_LBUTTON), 0) << "in a control of the system";
    Release(button, {3, 3});
    EXPECT_EQ(::GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_EQ(::GetSystemMetrics(SM_SWAPBUTTON), 0);
  });
}

TEST_F(MouseOnDesktop, AClickActivatesButLeavesTheKeyboardToTheProgram) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, WS_VISIBLE);
    const HWND child = Create(L"", kChildPlace, WS_CHILD | WS_VISIBLE, window);
    const HWND other = Create(L"", {300, 70, 400, 170}, WS_VISIBLE);
    Pump([&] { return ::GetActiveWindow() == other; });
    QTest::mouseClick(WidgetOf(child), Qt::LeftButton, {}, {5, 6});
    Pump([&] { return ::GetActiveWindow() == window; });
    PumpAll();
    EXPECT_EQ(::GetFocus(), window);
  });
}

}  // namespace
