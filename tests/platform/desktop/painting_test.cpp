#include <windows.h>

#include <gmock/gmock.h>

#include <QPixmap>

#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;

constexpr RECT kPlace = {60, 70, 260, 170};
constexpr COLORREF kPink = 0x00C080FF;  // red 255, green 128, blue 192

COLORREF ColourAt(QWidget* widget, int x, int y) {
  const QColor colour = widget->grab().toImage().pixelColor(x, y);
  return RGB(colour.red(), colour.green(), colour.blue());
}

TEST_F(WindowOnDesktop, AWindowIsFilledWithTheBrushOfItsClass) {
  OnWindowThread([] {
    const HBRUSH brush = ::CreateSolidBrush(kPink);
    const HWND window = Create(L"", kPlace, WS_VISIBLE, nullptr, 0, brush);
    EXPECT_EQ(ColourAt(WidgetOf(window), 20, 20), kPink);
    const auto ofSystem = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_HIGHLIGHT + 1});
    const HWND other = Create(L"", kPlace, WS_VISIBLE, nullptr, 0, ofSystem);
    EXPECT_EQ(ColourAt(WidgetOf(other), 20, 20), ::GetSysColor(COLOR_HIGHLIGHT));
    ::DestroyWindow(window);
    PumpAll();
    ::DeleteObject(brush);
  });
}

TEST_F(WindowOnDesktop, ItsProcedurePaintsOverTheBackgroundInsideTheDamage) {
  OnWindowThread([this] {
    HDC used = nullptr;
    std::vector<LONG> damage;
    On(WM_PAINT, [&](HWND window, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT paint{};
      used = ::BeginPaint(window, &paint);
      EXPECT_EQ(used, paint.hdc);
      EXPECT_FALSE(paint.fErase);
      damage = {paint.rcPaint.left, paint.rcPaint.top, paint.rcPaint.right, paint.rcPaint.bottom};
      const HBRUSH brush = ::CreateSolidBrush(kPink);
      const RECT area = {10, 10, 20, 20};
      ::FillRect(used, &area, brush);
      ::DeleteObject(brush);
      return ::EndPaint(window, &paint) ? 0 : 1;
    });
    const auto white = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_WINDOW + 1});
    const HWND window = Create(L"", kPlace, WS_VISIBLE, nullptr, 0, white);
    Pump([&] { return used != nullptr; });
    EXPECT_EQ(ColourAt(WidgetOf(window), 9, 15), ::GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(ColourAt(WidgetOf(window), 15, 15), kPink);
    EXPECT_THAT(damage, ElementsAre(0, 0, 200, 100));
    // The context is of no use after the painting.
    EXPECT_EQ(::SetTextColor(used, 0), CLR_INVALID);

    PumpAll();
    const RECT part = {5, 6, 50, 60};
    EXPECT_TRUE(::InvalidateRect(window, &part, TRUE));
    damage.clear();
    EXPECT_TRUE(::UpdateWindow(window));
    EXPECT_THAT(damage, ElementsAre(5, 6, 50, 60));
  });
}

TEST_F(WindowOnDesktop, AHiddenWindowIsNotPainted) {
  OnWindowThread([this] {
    const HWND window = Create(L"", kPlace, 0);
    ::InvalidateRect(window, nullptr, TRUE);
    ::UpdateWindow(window);
    PumpAll();
    EXPECT_EQ(CountOf(WM_PAINT), 0);
    ::ShowWindow(window, SW_SHOW);
    Pump([&] { return CountOf(WM_PAINT) > 0; });
  });
}

}  // namespace
