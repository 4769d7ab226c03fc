// Drawing into bitmaps in memory, looked at pixel by pixel.
#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/font_handle.h"

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

void Fill(HDC context, const RECT& area, COLORREF colour) {
  const HBRUSH brush = ::CreateSolidBrush(colour);
  EXPECT_NE(::FillRect(context, &area, brush), 0);
  ::DeleteObject(brush);
}

bool operator==(const RECT& one, const RECT& other) {
  return one.left == other.left && one.top == other.top && one.right == other.right &&
         one.bottom == other.bottom;
}

TEST(Drawing, AFilledAreaEndsBeforeItsRightAndBottomEdge) {
  OnDesktop([] {
    const DrawingSurface surface(20, 20);
    Fill(surface.Get(), {3, 4, 10, 12}, kRed);
    EXPECT_TRUE(*surface.Ink() == (RECT{3, 4, 10, 12}));
    EXPECT_EQ(surface.At(3, 4), kRed);
    EXPECT_EQ(surface.At(9, 11), kRed);
    EXPECT_EQ(surface.At(20, 5), CLR_INVALID);
  });
}

TEST(Drawing, BrushesOfTheSystemAreTakenByNumberToo) {
  OnDesktop([] {
    const DrawingSurface surface(4, 4);
    const RECT all{0, 0, 4, 4};
    const COLORREF highlight = ::GetSysColor(COLOR_HIGHLIGHT);
    ASSERT_NE(highlight, kWhite);
    EXPECT_NE(::FillRect(surface.Get(), &all, ::GetSysColorBrush(COLOR_HIGHLIGHT)), 0);
    EXPECT_EQ(surface.At(1, 1), highlight);
    surface.Clear();
    const auto byNumber = reinterpret_cast<HBRUSH>(static_cast<LONG_PTR>(COLOR_HIGHLIGHT + 1));
    EXPECT_NE(::FillRect(surface.Get(), &all, byNumber), 0);
    EXPECT_EQ(surface.At(1, 1), highlight);
    EXPECT_NE(::FillRect(surface.Get(), &all, static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH))),
              0);
    EXPECT_EQ(surface.At(1, 1), highlight);
  });
}

TEST(Drawing, TextStaysWithinItsExtent) {
  OnDesktop([] {
    const DrawingSurface surface(200, 60);
    const FontHandle font(L"MS Shell Dlg", -24);
    const SIZE size = ExtentOf(surface.Get(), font.Get(), L"Hello");
    ASSERT_GT(size.cx, 0);
    ::SelectObject(surface.Get(), font.Get());
    ::SetBkMode(surface.Get(), TRANSPARENT);
    ::SetTextColor(surface.Get(), kRed);
    ASSERT_TRUE(::TextOutW(surface.Get(), 20, 10, L"Hello, ignored", 5));
    const auto ink = surface.Ink();
    ASSERT_TRUE(ink.has_value());
    EXPECT_GE(ink->left, 20);
    EXPECT_GE(ink->top, 10);
    EXPECT_LE(ink->right, 20 + size.cx);
    EXPECT_LE(ink->bottom, 10 + size.cy);
    EXPECT_GT(ink->right - ink->left, size.cx * 3 / 4);
    EXPECT_GT(ink->bottom - ink->top, size.cy / 3);
  });
}

TEST(Drawing, OpaqueTextCoversWhatIsBehindIt) {
  OnDesktop([] {
    const DrawingSurface surface(100, 40);
    EXPECT_EQ(::GetBkMode(surface.Get()), OPAQUE);
    EXPECT_EQ(::SetBkColor(surface.Get(), kBlue), kWhite);
    ::TextOutW(surface.Get(), 5, 5, L"  ", 2);
    SIZE size{};
    ::GetTextExtentPoint32W(surface.Get(), L"  ", 2, &size);
    EXPECT_TRUE(*surface.Ink() == (RECT{5, 5, 5 + size.cx, 5 + size.cy}));
    surface.Clear();
    EXPECT_EQ(::SetBkMode(surface.Get(), TRANSPARENT), OPAQUE);
    ::TextOutW(surface.Get(), 5, 5, L"  ", 2);
    EXPECT_FALSE(surface.Ink().has_value());
  });
}

TEST(Drawing, PixelsAreCopiedFromThePlaceAskedFor) {
  OnDesktop([] {
    const DrawingSurface source(30, 30);
    Fill(source.Get(), {10, 20, 12, 22}, kRed);
    const DrawingSurface target(30, 30);
    ASSERT_TRUE(::BitBlt(target.Get(), 5, 6, 4, 4, source.Get(), 9, 19, SRCCOPY));
    EXPECT_TRUE(*target.Ink() == (RECT{6, 7, 8, 9}));
    // Onto itself too, also where both places overlap.
    ASSERT_TRUE(::BitBlt(target.Get(), 1, 1, 8, 8, target.Get(), 0, 0, SRCCOPY));
    EXPECT_EQ(target.At(8, 8), kRed);
    EXPECT_EQ(target.At(6, 7), kWhite);
  });
}

TEST(Drawing, TheScreenIsMeasuredButNotDrawnOn) {
  OnDesktop([] {
    const HDC screen = ::GetDC(nullptr);
    const DrawingSurface surface(10, 10);
    SIZE size{};
    EXPECT_TRUE(::GetTextExtentPoint32W(screen, L"Text", 4, &size));
    EXPECT_GT(size.cx, 0);
    EXPECT_EQ(::GetDeviceCaps(screen, LOGPIXELSX), 96);
    EXPECT_EQ(::GetDeviceCaps(screen, LOGPIXELSY), 96);
    EXPECT_FALSE(::BitBlt(surface.Get(), 0, 0, 5, 5, screen, 0, 0, SRCCOPY));
    EXPECT_FALSE(::TextOutW(screen, 0, 0, L"Text", 4));
    EXPECT_EQ(::SelectObject(screen, surface.Bitmap()), nullptr);
    EXPECT_FALSE(::DeleteDC(screen));
    EXPECT_EQ(::ReleaseDC(nullptr, screen), 1);
    EXPECT_EQ(::ReleaseDC(nullptr, screen), 0);
    EXPECT_EQ(::GetDC(reinterpret_cast<HWND>(static_cast<LONG_PTR>(0x7C))), nullptr);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
  });
}

TEST(Drawing, FontsHaveTheHeightAskedFor) {
  OnDesktop([] {
    const HDC screen = ::GetDC(nullptr);
    const auto height = [screen](std::wstring_view face, LONG wanted) {
      return ExtentOf(screen, FontHandle(face, wanted).Get(), L"Ag").cy;
    };
    // The height of the line.
    EXPECT_NEAR(height(L"", 40), 40, 1);
    // The desktop's font at its own size, whichever of the two is asked for; else in proportion.
    EXPECT_EQ(height(L"MS Shell Dlg", -11), height(L"MS Shell Dlg 2", -12));
    EXPECT_EQ(height(L"", -11), height(L"MS Shell Dlg", -11));
    EXPECT_NEAR(height(L"MS Shell Dlg", -48), 4 * height(L"MS Shell Dlg", -12), 4);
    // An unknown face is shown in the desktop's, at the size asked for.
    EXPECT_NEAR(height(L"No Such Face", -80), 2 * height(L"No Such Face", -40), 2);
    ::ReleaseDC(nullptr, screen);
  });
}

TEST(Drawing, BoldTextIsWider) {
  OnDesktop([] {
    const HDC screen = ::GetDC(nullptr);
    const FontHandle normal(L"", -40);
    const FontHandle bold(L"", -40, FW_BOLD);
    EXPECT_GT(ExtentOf(screen, bold.Get(), L"mmmm").cx, ExtentOf(screen, normal.Get(), L"mmmm").cx);
    ::ReleaseDC(nullptr, screen);
  });
}

TEST(Drawing, FontsAreMeasuredAsTheyAreShown) {
  OnDesktop([] {
    const DrawingSurface surface(200, 60);
    const FontHandle normal(L"", 30, FW_THIN);
    const FontHandle heavy(L"", 30, FW_HEAVY);
    const HGDIOBJ before = ::SelectObject(surface.Get(), normal.Get());
    TEXTMETRICW metrics{};
    ASSERT_TRUE(::GetTextMetricsW(surface.Get(), &metrics));
    EXPECT_EQ(metrics.tmHeight, ExtentOf(surface.Get(), normal.Get(), L"x").cy);
    EXPECT_EQ(metrics.tmHeight, metrics.tmAscent + metrics.tmDescent);
    EXPECT_EQ(metrics.tmWeight, FW_NORMAL);
    EXPECT_GT(metrics.tmMaxCharWidth, metrics.tmAveCharWidth);
    // What has no descender stands on the base line.
    ::SetBkMode(surface.Get(), TRANSPARENT);
    ::TextOutW(surface.Get(), 10, 10, L"HEM", 3);
    EXPECT_EQ(surface.Ink()->bottom, 10 + metrics.tmAscent);
    ::SelectObject(surface.Get(), heavy.Get());
    ASSERT_TRUE(::GetTextMetricsW(surface.Get(), &metrics));
    EXPECT_EQ(metrics.tmWeight, FW_BOLD);
    EXPECT_FALSE(::GetTextMetricsW(surface.Get(), nullptr));
    EXPECT_FALSE(::GetTextMetricsW(nullptr, &metrics));
    ::SelectObject(surface.Get(), before);
  });
}

TEST(Drawing, FontsOfTheDesktopAreTheOnesItReports) {
  OnDesktop([] {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ASSERT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
    const HDC screen = ::GetDC(nullptr);
    const HFONT message = ::CreateFontIndirectW(&metrics.lfMessageFont);
    EXPECT_EQ(ExtentOf(screen, message, L"Some text").cx,
              ExtentOf(screen, FontHandle(L"MS Shell Dlg", -11).Get(), L"Some text").cx);
    ::DeleteObject(message);
    ::ReleaseDC(nullptr, screen);
  });
}

TEST(Drawing, ABitmapIsSelectedInOneContextAtATime) {
  OnDesktop([] {
    const DrawingSurface surface(10, 10);
    const HDC other = ::CreateCompatibleDC(surface.Get());
    EXPECT_EQ(::SelectObject(other, surface.Bitmap()), nullptr);
    EXPECT_FALSE(::DeleteObject(surface.Bitmap()));
    EXPECT_TRUE(::DeleteDC(other));
  });
}

TEST(Drawing, WhatIsSelectedIsNotDeletedUntilItsContextIsGone) {
  OnDesktop([] {
    const HDC context = ::CreateCompatibleDC(nullptr);
    const FontHandle font(L"", -20);
    const HBRUSH brush = ::CreateSolidBrush(kRed);
    const HGDIOBJ fontBefore = ::SelectObject(context, font.Get());
    EXPECT_EQ(fontBefore, ::GetStockObject(SYSTEM_FONT));
    EXPECT_EQ(::SelectObject(context, brush), ::GetStockObject(WHITE_BRUSH));
    EXPECT_FALSE(::DeleteObject(font.Get()));
    EXPECT_FALSE(::DeleteObject(brush));
    EXPECT_EQ(::SelectObject(context, fontBefore), font.Get());
    EXPECT_TRUE(::DeleteObject(font.Get()));
    EXPECT_TRUE(::DeleteDC(context));
    EXPECT_TRUE(::DeleteObject(brush));
  });
}

TEST(Drawing, AnEndedContextIsNoLongerOne) {
  OnDesktop([] {
    const HDC context = ::CreateCompatibleDC(nullptr);
    ASSERT_TRUE(::DeleteDC(context));
    const FontHandle font(L"", -20);
    SIZE size{};
    const RECT area{0, 0, 1, 1};
    const HBRUSH white = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    // A handle of another kind is none either.
    for (const HDC handle : {context, reinterpret_cast<HDC>(font.Get())}) {
      ::SetLastError(NO_ERROR);
      EXPECT_EQ(::SelectObject(handle, font.Get()), nullptr);
      EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
      EXPECT_EQ(::SetTextColor(handle, 0), CLR_INVALID);
      EXPECT_EQ(::SetBkMode(handle, OPAQUE), 0);
      EXPECT_FALSE(::TextOutW(handle, 0, 0, L"x", 1));
      EXPECT_FALSE(::GetTextExtentPoint32W(handle, L"x", 1, &size));
      EXPECT_EQ(::FillRect(handle, &area, white), 0);
      EXPECT_EQ(::GetPixel(handle, 0, 0), CLR_INVALID);
      EXPECT_EQ(::CreateCompatibleBitmap(handle, 1, 1), nullptr);
      EXPECT_EQ(::CreateCompatibleDC(handle), nullptr);
      EXPECT_FALSE(::DeleteDC(handle));
    }
  });
}

TEST(Drawing, AContextIsUsedByAnotherThreadThanThatOfTheWindows) {
  OnDesktop([] {
    COLORREF seen = 0;
    const DWORD windowThread = ::GetCurrentThreadId();
    std::thread([&] {
      const DrawingSurface surface(10, 10);
      Fill(surface.Get(), {0, 0, 5, 5}, kRed);
      seen = surface.At(2, 2);
      ::PostThreadMessageW(windowThread, WM_QUIT, 0, 0);
    }).detach();
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0)
      ::DispatchMessageW(&message);
    EXPECT_EQ(seen, kRed);
  });
}

}  // namespace
