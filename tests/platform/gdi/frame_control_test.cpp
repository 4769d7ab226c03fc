// Check boxes that a window paints itself.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"

namespace {

std::vector<COLORREF> BoxOf(UINT state, RECT area) {
  const DrawingSurface surface(60, 40);
  EXPECT_TRUE(::DrawFrameControl(surface.Get(), &area, DFC_BUTTON, DFCS_BUTTONCHECK | state));
  std::vector<COLORREF> pixels;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 60; ++x)
      pixels.push_back(surface.At(x, y));
  }
  return pixels;
}

TEST(FrameControl, ACheckBoxIsTheLargestSquareInTheMiddle) {
  OnDesktop([] {
    const DrawingSurface surface(60, 40);
    RECT area{5, 10, 55, 26};
    ASSERT_TRUE(::DrawFrameControl(surface.Get(), &area, DFC_BUTTON, DFCS_BUTTONCHECK));
    const auto ink = surface.Ink();
    ASSERT_TRUE(ink.has_value());
    EXPECT_GE(ink->left, 22);
    EXPECT_LE(ink->right, 38);
    EXPECT_GE(ink->top, 10);
    EXPECT_LE(ink->bottom, 26);
    EXPECT_GE(ink->right - ink->left, 13);
    EXPECT_GE(ink->bottom - ink->top, 13);
  });
}

TEST(FrameControl, ItsStatesLookDifferent) {
  OnDesktop([] {
    constexpr RECT kArea{10, 10, 26, 26};
    const auto clear = BoxOf(0, kArea);
    EXPECT_EQ(BoxOf(0, kArea), clear);
    EXPECT_NE(BoxOf(DFCS_CHECKED, kArea), clear);
    EXPECT_NE(BoxOf(DFCS_CHECKED | DFCS_INACTIVE, kArea), BoxOf(DFCS_CHECKED, kArea));
  });
}

TEST(FrameControl, OtherPartsAreRefused) {
  OnDesktop([] {
    const DrawingSurface surface(40, 40);
    RECT area{0, 0, 40, 40};
    constexpr UINT kScroll = 3;
    constexpr UINT kRadio = 4;
    EXPECT_FALSE(::DrawFrameControl(surface.Get(), &area, kScroll, 0));
    EXPECT_FALSE(::DrawFrameControl(surface.Get(), &area, DFC_BUTTON, kRadio));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_FALSE(::DrawFrameControl(surface.Get(), nullptr, DFC_BUTTON, DFCS_BUTTONCHECK));
    EXPECT_FALSE(surface.Ink().has_value());
  });
}

}  // namespace
