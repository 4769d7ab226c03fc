// Rectangles of pens, brushes and raster operations, looked at pixel by pixel.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/gdi/drawing_surface.h"

namespace {

using Rows = std::vector<std::string>;
using Rectangles = DrawingTest;

HPEN RedPen(int width) {
  return ::CreatePen(PS_SOLID, width, kRed);
}

HBRUSH BlueBrush() {
  return ::CreateSolidBrush(kBlue);
}

HBRUSH NoBrush() {
  return static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
}

// White, cyan, red, yellow, blue and black.
char LetterOf(COLORREF pixel) {
  const int lit = GetRValue(pixel) / 255 * 4 + GetGValue(pixel) / 255 * 2 + GetBValue(pixel) / 255;
  return "kbgcrmy."[lit];
}

// A letter for each pixel of the rows from the top.
Rows Drawn(const RECT& area, HPEN pen, HBRUSH brush, int operation = R2_COPYPEN) {
  constexpr int kSide = 8;
  const DrawingSurface surface(kSide, kSide);
  const Selected selectedPen(surface.Get(), pen);
  const Selected selectedBrush(surface.Get(), brush);
  ::SetROP2(surface.Get(), operation);
  EXPECT_TRUE(::Rectangle(surface.Get(), area.left, area.top, area.right, area.bottom));
  Rows rows(kSide);
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x)
      rows[static_cast<std::size_t>(y)] += LetterOf(surface.At(x, y));
  }
  return rows;
}

TEST_F(Rectangles, APenOfOnePixelStaysInsideAndTheBrushInsideOfIt) {
  const Rows expected = {"........", ".rrrrr..", ".rbbbr..", ".rbbbr..",
                         ".rrrrr..", "........", "........", "........"};
  EXPECT_EQ(Drawn({1, 1, 6, 5}, RedPen(1), BlueBrush()), expected);
  EXPECT_EQ(Drawn({1, 1, 6, 5}, RedPen(0), BlueBrush()), expected);
  EXPECT_EQ(Drawn({6, 5, 1, 1}, RedPen(1), BlueBrush()), expected) << "edges given in reverse";
}

TEST_F(Rectangles, AWidePenLiesOnBothSidesOfItsLine) {
  EXPECT_EQ(Drawn({1, 1, 7, 7}, RedPen(3), BlueBrush()),
            (Rows{"rrrrrrrr", "rrrrrrrr", "rrrrrrrr", "rrrbbrrr", "rrrbbrrr", "rrrrrrrr",
                  "rrrrrrrr", "rrrrrrrr"}));
  EXPECT_EQ(Drawn({2, 2, 7, 7}, RedPen(2), NoBrush()),
            (Rows{"........", ".rrrrrr.", ".rrrrrr.", ".rr..rr.", ".rr..rr.", ".rrrrrr.",
                  ".rrrrrr.", "........"}));
}

TEST_F(Rectangles, WithoutAPenARectangleIsOnePixelSmaller) {
  const auto none = static_cast<HPEN>(::GetStockObject(NULL_PEN));
  const Rows expected = {"........", ".bbbb...", ".bbbb...", "........",
                         "........", "........", "........", "........"};
  EXPECT_EQ(Drawn({1, 1, 6, 4}, none, BlueBrush()), expected);
  EXPECT_EQ(Drawn({1, 1, 6, 4}, ::CreatePen(PS_NULL, 3, kRed), BlueBrush()), expected);
}

TEST_F(Rectangles, ARectangleWithoutAnInsideIsAllPen) {
  EXPECT_EQ(Drawn({1, 1, 3, 3}, RedPen(1), BlueBrush()),
            (Rows{"........", ".rr.....", ".rr.....", "........", "........", "........",
                  "........", "........"}));
  EXPECT_EQ(Drawn({3, 1, 3, 5}, RedPen(1), BlueBrush()), Rows(8, "........"));
}

TEST_F(Rectangles, TwiceTheExclusiveOrIsNothing) {
  for (const int operation : {R2_XORPEN, R2_NOTXORPEN, R2_NOT}) {
    const DrawingSurface surface(20, 20);
    const HBRUSH blue = BlueBrush();
    const RECT half{0, 0, 10, 20};
    ::FillRect(surface.Get(), &half, blue);
    ::DeleteObject(blue);
    const std::vector<COLORREF> before = surface.Pixels();
    const Selected brush(surface.Get(), ::CreateSolidBrush(RGB(10, 200, 30)));
    const Selected pen(surface.Get(), ::CreatePen(PS_SOLID, 3, RGB(200, 100, 50)));
    ASSERT_EQ(::SetROP2(surface.Get(), operation), R2_COPYPEN);
    ::Rectangle(surface.Get(), 4, 4, 16, 16);
    EXPECT_NE(surface.At(3, 3), kBlue) << operation;
    EXPECT_NE(surface.At(8, 8), kBlue) << operation << ": the brush takes no part";
    ::Rectangle(surface.Get(), 4, 4, 16, 16);
    EXPECT_EQ(surface.Pixels(), before) << operation;
  }
}

TEST_F(Rectangles, AnExclusiveOrHitsEachPixelOnce) {
  EXPECT_EQ(Drawn({2, 2, 7, 7}, RedPen(2), BlueBrush(), R2_XORPEN),
            (Rows{"........", ".cccccc.", ".cccccc.", ".ccyycc.", ".ccyycc.", ".cccccc.",
                  ".cccccc.", "........"}));
}

}  // namespace
