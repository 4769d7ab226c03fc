#include <windows.h>

#include <gtest/gtest.h>

#include "platform/desktop/window_fixture.h"

namespace {

constexpr RECT kPlace = {60, 70, 260, 170};

class CaretOnDesktop : public WindowOnDesktop {
 protected:
  HWND CreateWhite() {
    const HWND window = Create(L"", kPlace, WS_VISIBLE, nullptr, 0,
                               static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    Pump([&] { return CountOf(WM_PAINT) > 0; });
    PumpAll();
    return window;
  }
  static bool IsLit(HWND window, int x, int y) {
    return WidgetOf(window)->grab().toImage().pixelColor(x, y) == Qt::black;
  }
};

TEST_F(CaretOnDesktop, ItIsSeenAsLongAsItIsShownAsOftenAsHidden) {
  OnWindowThread([this] {
    const HWND window = CreateWhite();
    ::CreateCaret(window, nullptr, 3, 12);
    ::SetCaretPos(20, 30);
    EXPECT_FALSE(IsLit(window, 20, 30)) << "a new one is hidden";
    ::ShowCaret(window);
    EXPECT_TRUE(IsLit(window, 20, 30));
    EXPECT_TRUE(IsLit(window, 22, 41));
    EXPECT_FALSE(IsLit(window, 23, 30));
    EXPECT_FALSE(IsLit(window, 20, 42));
    ::HideCaret(window);
    ::HideCaret(window);
    EXPECT_FALSE(IsLit(window, 20, 30));
    ::ShowCaret(window);
    EXPECT_FALSE(IsLit(window, 20, 30)) << "hidden twice, shown once";
    ::ShowCaret(window);
    EXPECT_TRUE(IsLit(window, 20, 30));
    ::ShowCaret(window);
    ::HideCaret(window);
    EXPECT_FALSE(IsLit(window, 20, 30)) << "showing it twice counts once";
  });
}

TEST_F(CaretOnDesktop, ItMovesWithoutATraceAndBlinks) {
  OnWindowThread([this] {
    const HWND window = CreateWhite();
    ::CreateCaret(window, nullptr, 3, 12);
    ::ShowCaret(window);
    ::SetCaretPos(50, 30);
    EXPECT_FALSE(IsLit(window, 1, 1));
    EXPECT_TRUE(IsLit(window, 51, 31));
    const HDC context = ::GetDC(window);
    EXPECT_EQ(::GetPixel(context, 51, 31), RGB(255, 255, 255)) << "it lies over the surface";
    ::ReleaseDC(window, context);
    Pump([&] { return !IsLit(window, 51, 31); });
    Pump([&] { return IsLit(window, 51, 31); });
    ::UpdateWindow(window);
    EXPECT_TRUE(IsLit(window, 51, 31)) << "painting does not take it away";
    ::DestroyCaret();
    EXPECT_FALSE(IsLit(window, 51, 31));
  });
}

}  // namespace
