// Fonts of other systems, shown in those of the desktop.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/gdi/drawing_surface.h"

namespace {

using Fonts = DrawingTest;

LONG HeightOf(std::wstring_view face, LONG wanted) {
  const DrawingSurface surface(1, 1);
  const Selected font(surface.Get(), NewFont(face, wanted));
  return ExtentOf(surface.Get(), L"Ag").cy;
}

TEST_F(Fonts, FontsHaveTheHeightAskedFor) {
  // The height of the line.
  EXPECT_NEAR(HeightOf(L"", 40), 40, 1);
  // The desktop's font at its own size, whichever of the two is asked for; else in proportion.
  EXPECT_EQ(HeightOf(L"MS Shell Dlg", -11), HeightOf(L"MS Shell Dlg 2", -12));
  EXPECT_EQ(HeightOf(L"", -11), HeightOf(L"MS Shell Dlg", -11));
  EXPECT_NEAR(HeightOf(L"MS Shell Dlg", -48), 4 * HeightOf(L"MS Shell Dlg", -12), 4);
  // An unknown face is shown in the desktop's, at the size asked for.
  EXPECT_NEAR(HeightOf(L"No Such Face", -80), 2 * HeightOf(L"No Such Face", -40), 2);
}

TEST_F(Fonts, TheReportedMessageFontIsTheOneShown) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  ASSERT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
  const DrawingSurface surface(1, 1);
  const Selected message(surface.Get(), ::CreateFontIndirectW(&metrics.lfMessageFont));
  const LONG width = ExtentOf(surface.Get(), L"Some text").cx;
  const Selected shell(surface.Get(), NewFont(L"MS Shell Dlg", -11));
  EXPECT_EQ(ExtentOf(surface.Get(), L"Some text").cx, width);
}

}  // namespace
