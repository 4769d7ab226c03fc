// Drawing into bitmaps in memory, looked at pixel by pixel.
#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

#include "platform/gdi/drawing_surface.h"

namespace {

using Drawing = DrawingTest;

TEST_F(Drawing, AFilledAreaEndsBeforeItsRightAndBottomEdge) {
  surface_.Fill({3, 4, 10, 12}, ::CreateSolidBrush(kRed));
  EXPECT_EQ(surface_.Ink(), (RECT{3, 4, 10, 12}));
  EXPECT_EQ(surface_.At(3, 4), kRed);
  EXPECT_EQ(surface_.At(9, 11), kRed);
  EXPECT_EQ(surface_.At(200, 5), CLR_INVALID);
}

TEST_F(Drawing, BrushesOfTheSystemAreTakenByNumberToo) {
  const COLORREF highlight = ::GetSysColor(COLOR_HIGHLIGHT);
  ASSERT_NE(highlight, kWhite);
  const auto byNumber = reinterpret_cast<HBRUSH>(static_cast<LONG_PTR>(COLOR_HIGHLIGHT + 1));
  for (const HBRUSH brush : {::GetSysColorBrush(COLOR_HIGHLIGHT), byNumber}) {
    surface_.Clear();
    surface_.Fill({0, 0, 4, 4}, brush);
    EXPECT_EQ(surface_.At(1, 1), highlight);
  }
  surface_.Fill({0, 0, 4, 4}, static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH)));
  EXPECT_EQ(surface_.At(1, 1), highlight) << "the null brush paints";
}

TEST_F(Drawing, TextStaysWithinItsExtent) {
  const Selected font(page_, NewFont(L"MS Shell Dlg", -24));
  const SIZE size = ExtentOf(page_, L"Hello");
  ::SetBkMode(page_, TRANSPARENT);
  ASSERT_TRUE(::TextOutW(page_, 20, 10, L"Hello, ignored", 5));
  const RECT ink = surface_.Ink();
  EXPECT_PRED2(IsWithin, ink, (RECT{20, 10, 20 + size.cx, 10 + size.cy}));
  EXPECT_GT(ink.right - ink.left, size.cx * 3 / 4);
  EXPECT_GT(ink.bottom - ink.top, size.cy / 3);
}

TEST_F(Drawing, OpaqueTextCoversWhatIsBehindIt) {
  EXPECT_EQ(::SetBkColor(page_, kBlue), kWhite);
  ::TextOutW(page_, 5, 5, L"  ", 2);
  const SIZE size = ExtentOf(page_, L"  ");
  EXPECT_EQ(surface_.Ink(), (RECT{5, 5, 5 + size.cx, 5 + size.cy}));
  surface_.Clear();
  EXPECT_EQ(::SetBkMode(page_, TRANSPARENT), OPAQUE);
  ::TextOutW(page_, 5, 5, L"  ", 2);
  EXPECT_EQ(surface_.Ink(), RECT{});
}

TEST_F(Drawing, PixelsAreCopiedFromThePlaceAskedFor) {
  const DrawingSurface source(30, 30);
  source.Fill({10, 20, 14, 24}, ::CreateSolidBrush(kRed));
  ASSERT_TRUE(::BitBlt(page_, 4, 6, 8, 8, source.Get(), 8, 18, SRCCOPY));
  EXPECT_EQ(surface_.Ink(), (RECT{6, 8, 10, 12}));
  // Onto itself too, also where both places overlap.
  ASSERT_TRUE(::BitBlt(page_, 2, 2, 10, 12, page_, 0, 0, SRCCOPY));
  EXPECT_EQ(surface_.Ink(), (RECT{8, 10, 12, 14}));
}

TEST_F(Drawing, AScreenMeasuresTextAndIsReleasedOnceAndNotDeleted) {
  const HDC screen = ::GetDC(nullptr);
  EXPECT_GT(ExtentOf(screen, L"Text").cx, 0);
  RECT area{};
  EXPECT_GT(::DrawTextW(screen, L"Text", -1, &area, DT_CALCRECT), 0);
  EXPECT_FALSE(::DeleteDC(screen));
  EXPECT_EQ(::ReleaseDC(nullptr, screen), 1);
  EXPECT_EQ(::ReleaseDC(nullptr, screen), 0);
}

TEST_F(Drawing, FontsAreMeasuredAsTheyAreShown) {
  const Selected normal(page_, NewFont(L"", 30, FW_THIN));
  TEXTMETRICW metrics{};
  ASSERT_TRUE(::GetTextMetricsW(page_, &metrics));
  EXPECT_EQ(metrics.tmHeight, ExtentOf(page_, L"x").cy);
  EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
  EXPECT_EQ(metrics.tmWeight, FW_NORMAL);
  EXPECT_GT(metrics.tmMaxCharWidth, metrics.tmAveCharWidth);
  const LONG width = ExtentOf(page_, L"mmmm").cx;
  // What has no descender stands on the base line.
  ::SetBkMode(page_, TRANSPARENT);
  ::TextOutW(page_, 10, 10, L"HEM", 3);
  EXPECT_EQ(surface_.Ink().bottom, 10 + metrics.tmAscent);
  const Selected heavy(page_, NewFont(L"", 30, FW_HEAVY));
  ASSERT_TRUE(::GetTextMetricsW(page_, &metrics));
  EXPECT_EQ(metrics.tmWeight, FW_BOLD);
  EXPECT_GT(ExtentOf(page_, L"mmmm").cx, width) << "bold text is no wider";
}

TEST_F(Drawing, AContextIsUsedByAnotherThreadThanThatOfTheWindows) {
  COLORREF seen = 0;
  const DWORD windowThread = ::GetCurrentThreadId();
  std::thread other([&] {
    const DrawingSurface surface(10, 10);
    surface.Fill({0, 0, 5, 5}, ::CreateSolidBrush(kRed));
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
