// Drawing into bitmaps in memory, looked at pixel by pixel.
#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

#include "platform/gdi/drawing_surface.h"

namespace {

using Drawing = DrawingTest;

void Fill(HDC context, const RECT& area, HBRUSH brush) {
  EXPECT_NE(::FillRect(context, &area, brush), 0);
  ::DeleteObject(brush);
}

TEST_F(Drawing, AFilledAreaEndsBeforeItsRightAndBottomEdge) {
  const DrawingSurface surface(20, 20);
  Fill(surface.Get(), {3, 4, 10, 12}, ::CreateSolidBrush(kRed));
  EXPECT_EQ(surface.Ink(), (RECT{3, 4, 10, 12}));
  EXPECT_EQ(surface.At(3, 4), kRed);
  EXPECT_EQ(surface.At(9, 11), kRed);
  EXPECT_EQ(surface.At(20, 5), CLR_INVALID);
}

TEST_F(Drawing, BrushesOfTheSystemAreTakenByNumberToo) {
  const DrawingSurface surface(4, 4);
  const COLORREF highlight = ::GetSysColor(COLOR_HIGHLIGHT);
  ASSERT_NE(highlight, kWhite);
  const auto byNumber = reinterpret_cast<HBRUSH>(static_cast<LONG_PTR>(COLOR_HIGHLIGHT + 1));
  for (const HBRUSH brush : {::GetSysColorBrush(COLOR_HIGHLIGHT), byNumber}) {
    surface.Clear();
    Fill(surface.Get(), {0, 0, 4, 4}, brush);
    EXPECT_EQ(surface.At(1, 1), highlight);
  }
  Fill(surface.Get(), {0, 0, 4, 4}, static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH)));
  EXPECT_EQ(surface.At(1, 1), highlight) << "the null brush paints";
}

TEST_F(Drawing, TextStaysWithinItsExtent) {
  const DrawingSurface surface(200, 60);
  const Selected font(surface.Get(), NewFont(L"MS Shell Dlg", -24));
  const SIZE size = ExtentOf(surface.Get(), L"Hello");
  ::SetBkMode(surface.Get(), TRANSPARENT);
  ASSERT_TRUE(::TextOutW(surface.Get(), 20, 10, L"Hello, ignored", 5));
  const RECT ink = surface.Ink().value();
  EXPECT_GE(ink.left, 20);
  EXPECT_GE(ink.top, 10);
  EXPECT_LE(ink.right, 20 + size.cx);
  EXPECT_LE(ink.bottom, 10 + size.cy);
  EXPECT_GT(ink.right - ink.left, size.cx * 3 / 4);
  EXPECT_GT(ink.bottom - ink.top, size.cy / 3);
}

TEST_F(Drawing, OpaqueTextCoversWhatIsBehindIt) {
  const DrawingSurface surface(100, 40);
  EXPECT_EQ(::SetBkColor(surface.Get(), kBlue), kWhite);
  ::TextOutW(surface.Get(), 5, 5, L"  ", 2);
  const SIZE size = ExtentOf(surface.Get(), L"  ");
  EXPECT_EQ(surface.Ink(), (RECT{5, 5, 5 + size.cx, 5 + size.cy}));
  surface.Clear();
  EXPECT_EQ(::SetBkMode(surface.Get(), TRANSPARENT), OPAQUE);
  ::TextOutW(surface.Get(), 5, 5, L"  ", 2);
  EXPECT_EQ(surface.Ink(), std::nullopt);
}

TEST_F(Drawing, PixelsAreCopiedFromThePlaceAskedFor) {
  const DrawingSurface source(30, 30);
  Fill(source.Get(), {10, 20, 14, 24}, ::CreateSolidBrush(kRed));
  const DrawingSurface target(30, 30);
  ASSERT_TRUE(::BitBlt(target.Get(), 4, 6, 8, 8, source.Get(), 8, 18, SRCCOPY));
  EXPECT_EQ(target.Ink(), (RECT{6, 8, 10, 12}));
  // Onto itself too, also where both places overlap.
  ASSERT_TRUE(::BitBlt(target.Get(), 2, 2, 10, 12, target.Get(), 0, 0, SRCCOPY));
  EXPECT_EQ(target.Ink(), (RECT{8, 10, 12, 14}));
}

TEST_F(Drawing, AScreenIsReleasedOnceAndNotDeleted) {
  const HDC screen = ::GetDC(nullptr);
  EXPECT_GT(ExtentOf(screen, L"Text").cx, 0);
  EXPECT_FALSE(::DeleteDC(screen));
  EXPECT_EQ(::ReleaseDC(nullptr, screen), 1);
  EXPECT_EQ(::ReleaseDC(nullptr, screen), 0);
}

TEST_F(Drawing, FontsAreMeasuredAsTheyAreShown) {
  const DrawingSurface surface(200, 60);
  const Selected normal(surface.Get(), NewFont(L"", 30, FW_THIN));
  TEXTMETRICW metrics{};
  ASSERT_TRUE(::GetTextMetricsW(surface.Get(), &metrics));
  EXPECT_EQ(metrics.tmHeight, ExtentOf(surface.Get(), L"x").cy);
  EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
  EXPECT_EQ(metrics.tmWeight, FW_NORMAL);
  EXPECT_GT(metrics.tmMaxCharWidth, metrics.tmAveCharWidth);
  const LONG width = ExtentOf(surface.Get(), L"mmmm").cx;
  // What has no descender stands on the base line.
  ::SetBkMode(surface.Get(), TRANSPARENT);
  ::TextOutW(surface.Get(), 10, 10, L"HEM", 3);
  EXPECT_EQ(surface.Ink()->bottom, 10 + metrics.tmAscent);
  const Selected heavy(surface.Get(), NewFont(L"", 30, FW_HEAVY));
  ASSERT_TRUE(::GetTextMetricsW(surface.Get(), &metrics));
  EXPECT_EQ(metrics.tmWeight, FW_BOLD);
  EXPECT_GT(ExtentOf(surface.Get(), L"mmmm").cx, width) << "bold text is no wider";
}

TEST_F(Drawing, AContextIsUsedByAnotherThreadThanThatOfTheWindows) {
  COLORREF seen = 0;
  const DWORD windowThread = ::GetCurrentThreadId();
  std::thread other([&] {
    const DrawingSurface surface(10, 10);
    Fill(surface.Get(), {0, 0, 5, 5}, ::CreateSolidBrush(kRed));
    seen = surface.At(2, 2);
    ::PostThreadMessageW(windowThread, WM_QUIT, 0, 0);
  });
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0)
    ::DispatchMessageW(&message);
  other.join();
  EXPECT_EQ(seen, kRed);
}

}  // namespace
