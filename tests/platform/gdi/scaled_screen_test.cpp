// Screens with more than 96 pixels to the inch, each in a process of its own, since the scale is
// that of the whole desktop.
#include <windows.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/font_handle.h"
#include "platform/gdi/resource_fixture.h"

namespace {

// Ends the process with an error as soon as something is not as it should be.
void Require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  ::_exit(EXIT_FAILURE);
}

[[noreturn]] void RunScaled(const char* factor, void (*body)()) {
  ::alarm(60);
  ::setenv("QT_SCALE_FACTOR", factor, 1);
  OnDesktop(body);
  std::exit(EXIT_SUCCESS);
}

void ExpectCleanExit(const char* factor, void (*body)()) {
  ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(RunScaled(factor, body), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}

// The icon of 16 pixels is red, that of 32 green.
COLORREF DrawnInSixteenPixels() {
  RegisterImageResources();
  const DrawingSurface surface(40, 40);
  const auto icon = static_cast<HICON>(::LoadImageW(
      ::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconSizes), IMAGE_ICON, 16, 16, 0));
  ::DrawIconEx(surface.Get(), 3, 3, icon, 16, 16, 0, nullptr, DI_NORMAL);
  ::DestroyIcon(icon);
  const auto ink = surface.Ink();
  Require(ink.has_value() && ink->left == 3 && ink->right == 19, "the icon's place");
  return surface.At(10, 10);
}

TEST(ScaledScreen, IconsAreDrawnFromThePictureThatIsAsFineAsTheScreen) {
  ExpectCleanExit("1", [] { Require(DrawnInSixteenPixels() == RGB(255, 0, 0), "the small one"); });
  ExpectCleanExit("2", [] { Require(DrawnInSixteenPixels() == RGB(0, 255, 0), "the large one"); });
}

void DrawAndCopy() {
  const DrawingSurface surface(100, 60);
  const RECT area{10, 10, 20, 20};
  ::FillRect(surface.Get(), &area, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
  const DrawingSurface copy(100, 60);
  Require(::BitBlt(copy.Get(), 30, 5, 20, 20, surface.Get(), 5, 5, SRCCOPY), "a copy");
  const RECT copied = *copy.Ink();
  Require(copied.left == 35 && copied.top == 10 && copied.right == 45 && copied.bottom == 20,
          "the place of the copy");
  const FontHandle font(L"", 40);
  Require(std::abs(ExtentOf(surface.Get(), font.Get(), L"Ag").cy - 40) <= 1, "the font's height");
  ::SelectObject(surface.Get(), font.Get());
  surface.Clear();
  ::SetBkMode(surface.Get(), TRANSPARENT);
  ::TextOutW(surface.Get(), 10, 10, L"H", 1);
  const RECT ink = *surface.Ink();
  Require(ink.left >= 10 && ink.top >= 10 && ink.bottom <= 50, "the place of the text");
  Require(ink.bottom - ink.top >= 20, "the size of the text");
}

TEST(ScaledScreen, PlacesAndSizesAreThoseOfAnOrdinaryOne) {
  ExpectCleanExit("1", DrawAndCopy);
  ExpectCleanExit("2", DrawAndCopy);
  ExpectCleanExit("1.5", DrawAndCopy);
}

void XorTwice() {
  const DrawingSurface surface(60, 60);
  const RECT half{0, 0, 30, 60};
  ::FillRect(surface.Get(), &half, static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH)));
  const HGDIOBJ pen = ::SelectObject(surface.Get(), ::CreatePen(PS_SOLID, 3, RGB(255, 255, 255)));
  ::SelectObject(surface.Get(), ::GetStockObject(NULL_BRUSH));
  ::SetROP2(surface.Get(), R2_XORPEN);
  ::Rectangle(surface.Get(), 11, 11, 49, 49);
  for (const auto& [x, y] : {std::pair{10, 10}, {48, 49}, {49, 10}, {30, 12}}) {
    const COLORREF before = x < 30 ? RGB(128, 128, 128) : RGB(255, 255, 255);
    Require(surface.At(x, y) == (before ^ RGB(255, 255, 255)), "a pixel of the frame");
  }
  Require(surface.At(13, 13) == RGB(128, 128, 128) && surface.At(50, 20) == RGB(255, 255, 255),
          "the frame's width");
  ::Rectangle(surface.Get(), 11, 11, 49, 49);
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 60; ++x)
      Require(surface.At(x, y) == (x < 30 ? RGB(128, 128, 128) : RGB(255, 255, 255)), "undone");
  }
  ::DeleteObject(::SelectObject(surface.Get(), pen));
}

TEST(ScaledScreen, TwiceTheExclusiveOrIsNothing) {
  ExpectCleanExit("1", XorTwice);
  ExpectCleanExit("2", XorTwice);
}

void DrawCheckedTextInBox() {
  const DrawingSurface surface(100, 60);
  RECT area{20, 20, 60, 36};
  ::DrawFrameControl(surface.Get(), &area, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_CHECKED);
  const RECT box = *surface.Ink();
  Require(box.left >= 32 && box.right <= 48 && box.top >= 20 && box.bottom <= 36, "the box");
  surface.Clear();
  ::SetBkMode(surface.Get(), TRANSPARENT);
  ::DrawTextW(surface.Get(), L"WWWWWWWWWW", -1, &area, DT_SINGLELINE | DT_VCENTER | DT_CENTER);
  const RECT text = *surface.Ink();
  Require(text.left >= 20 && text.right <= 60 && text.top >= 20 && text.bottom <= 36, "the clip");
  Require(text.right - text.left >= 38, "the text");
}

TEST(ScaledScreen, TextAndBoxesStayInTheirAreas) {
  ExpectCleanExit("1", DrawCheckedTextInBox);
  ExpectCleanExit("2", DrawCheckedTextInBox);
}

}  // namespace
