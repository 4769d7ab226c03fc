// Screens with more than 96 pixels to the inch, each in a process of its own, since the scale is
// that of the whole desktop.
#include <windows.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/gdi/drawing_surface.h"
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
  {
    const HiddenWindow window;
    body();
  }
  std::exit(EXIT_SUCCESS);
}

void ExpectCleanExit(const char* factor, void (*body)()) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
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
  Require(surface.Ink() == RECT{3, 3, 19, 19}, "the icon's place");
  return surface.At(10, 10);
}

TEST(ScaledScreen, IconsAreDrawnFromThePictureThatIsAsFineAsTheScreen) {
  ExpectCleanExit("1", [] { Require(DrawnInSixteenPixels() == kRed, "the small one"); });
  ExpectCleanExit("2", [] { Require(DrawnInSixteenPixels() == kGreen, "the large one"); });
}

void DrawAndCopy() {
  const DrawingSurface surface(100, 60);
  const RECT area{10, 10, 20, 20};
  ::FillRect(surface.Get(), &area, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
  const DrawingSurface copy(100, 60);
  Require(::BitBlt(copy.Get(), 30, 5, 20, 20, surface.Get(), 5, 5, SRCCOPY), "a copy");
  Require(copy.Ink() == RECT{35, 10, 45, 20}, "the place of the copy");
  const Selected font(surface.Get(), NewFont(L"", 40));
  Require(std::abs(ExtentOf(surface.Get(), L"Ag").cy - 40) <= 1, "the font's height");
  surface.Clear();
  ::SetBkMode(surface.Get(), TRANSPARENT);
  ::TextOutW(surface.Get(), 10, 10, L"H", 1);
  const RECT ink = *surface.Ink();
  Require(ink.left >= 10 && ink.top >= 10 && ink.bottom <= 50, "the place of the text");
  Require(ink.bottom - ink.top >= 20, "the size of the text");
}

// Twice, which is nothing.
void DrawExclusiveOr() {
  const DrawingSurface surface(60, 60);
  const RECT half{0, 0, 30, 60};
  ::FillRect(surface.Get(), &half, static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH)));
  const std::vector<COLORREF> before = surface.Pixels();
  const Selected pen(surface.Get(), ::CreatePen(PS_SOLID, 3, kWhite));
  const Selected brush(surface.Get(), ::GetStockObject(NULL_BRUSH));
  ::SetROP2(surface.Get(), R2_XORPEN);
  ::Rectangle(surface.Get(), 11, 11, 49, 49);
  for (const auto& [x, y] : {std::pair{10, 10}, {48, 49}, {49, 10}, {30, 12}}) {
    const COLORREF was = x < 30 ? RGB(128, 128, 128) : kWhite;
    Require(surface.At(x, y) == (was ^ kWhite), "a pixel of the frame");
  }
  Require(surface.At(13, 13) == RGB(128, 128, 128) && surface.At(50, 20) == kWhite,
          "the frame's width");
  ::Rectangle(surface.Get(), 11, 11, 49, 49);
  Require(surface.Pixels() == before, "undone");
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

TEST(ScaledScreen, PlacesAndSizesAreThoseOfAnOrdinaryOne) {
  for (const char* factor : {"1", "2", "1.5"}) {
    SCOPED_TRACE(factor);
    ExpectCleanExit(factor, [] {
      DrawAndCopy();
      DrawExclusiveOr();
      DrawCheckedTextInBox();
    });
  }
}

}  // namespace
