// Screens with more than 96 pixels to the inch, each in a process of its own, since the scale is
// that of the whole desktop.
#include <windows.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

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

}  // namespace
