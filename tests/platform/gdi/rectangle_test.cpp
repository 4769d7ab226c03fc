// Rectangles, and the edges and check boxes that a window paints itself, looked at pixel by pixel.
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
  const auto none = static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
  EXPECT_EQ(Drawn({2, 2, 7, 7}, RedPen(2), none),
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
    surface.Fill({0, 0, 10, 20}, BlueBrush());
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

struct EdgeCase {
  UINT edge;
  // System colours, from the outside to the inside.
  int leftAndTop[2];
  int rightAndBottom[2];
};
constexpr EdgeCase kEdges[] = {
    {EDGE_RAISED, {COLOR_3DLIGHT, COLOR_BTNHIGHLIGHT}, {COLOR_3DDKSHADOW, COLOR_BTNSHADOW}},
    {EDGE_SUNKEN, {COLOR_BTNSHADOW, COLOR_3DDKSHADOW}, {COLOR_BTNHIGHLIGHT, COLOR_3DLIGHT}},
    {EDGE_ETCHED, {COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT}, {COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW}},
    {EDGE_BUMP, {COLOR_3DLIGHT, COLOR_3DDKSHADOW}, {COLOR_3DDKSHADOW, COLOR_3DLIGHT}},
};

using Edge = DrawingTest;

TEST_F(Edge, LinesHaveTheColoursOfTheirSides) {
  for (const EdgeCase& each : kEdges) {
    SCOPED_TRACE(each.edge);
    surface_.Clear();
    RECT area{2, 3, 18, 17};
    ASSERT_TRUE(::DrawEdge(page_, &area, each.edge, BF_RECT | BF_MIDDLE));
    EXPECT_EQ(area, (RECT{2, 3, 18, 17})) << "not asked to be adjusted";
    for (int ring = 0; ring < 2; ++ring) {
      const COLORREF lit = ::GetSysColor(each.leftAndTop[ring]);
      const COLORREF shaded = ::GetSysColor(each.rightAndBottom[ring]);
      EXPECT_EQ(surface_.At(2 + ring, 3 + ring), lit);
      EXPECT_EQ(surface_.At(2 + ring, 10), lit);
      EXPECT_EQ(surface_.At(10, 3 + ring), lit);
      EXPECT_EQ(surface_.At(17 - ring, 10), shaded);
      EXPECT_EQ(surface_.At(10, 16 - ring), shaded);
      EXPECT_EQ(surface_.At(17 - ring, 3 + ring), shaded) << "upper right corner";
      EXPECT_EQ(surface_.At(2 + ring, 16 - ring), shaded) << "lower left corner";
    }
    EXPECT_EQ(surface_.At(4, 5), ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(surface_.At(15, 14), ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(surface_.At(1, 10), kWhite);
    EXPECT_EQ(surface_.At(18, 10), kWhite);
  }
}

TEST_F(Edge, OnlyTheSidesAskedForAreDrawnAndTakenOff) {
  RECT area{2, 3, 18, 17};
  ASSERT_TRUE(::DrawEdge(page_, &area, EDGE_ETCHED, BF_TOP | BF_RIGHT | BF_ADJUST));
  EXPECT_EQ(area, (RECT{2, 5, 16, 17}));
  EXPECT_EQ(surface_.At(2, 10), kWhite) << "left";
  EXPECT_EQ(surface_.At(10, 16), kWhite) << "bottom";
  EXPECT_EQ(surface_.At(10, 10), kWhite) << "middle";
  EXPECT_EQ(surface_.At(10, 3), ::GetSysColor(COLOR_BTNSHADOW));
}

TEST_F(Edge, AnAreaSmallerThanItsLinesIsNotLeft) {
  RECT area{5, 5, 7, 15};
  ASSERT_TRUE(::DrawEdge(page_, &area, EDGE_ETCHED, BF_RECT | BF_MIDDLE));
  EXPECT_PRED2(IsWithin, surface_.Ink(), (RECT{5, 5, 7, 15}));
}

using CheckBox = DrawingTest;

TEST_F(CheckBox, TheBoxIsTheLargestSquareInTheMiddle) {
  RECT area{5, 10, 55, 26};
  EXPECT_TRUE(::DrawFrameControl(page_, &area, DFC_BUTTON, DFCS_BUTTONCHECK));
  const RECT ink = surface_.Ink();
  EXPECT_PRED2(IsWithin, ink, (RECT{22, 10, 38, 26}));
  EXPECT_GE(ink.right - ink.left, 13);
  EXPECT_GE(ink.bottom - ink.top, 13);
}

TEST_F(CheckBox, StatesLookDifferent) {
  const auto drawn = [this](UINT state) {
    surface_.Clear();
    RECT area{10, 10, 26, 26};
    EXPECT_TRUE(::DrawFrameControl(page_, &area, DFC_BUTTON, DFCS_BUTTONCHECK | state));
    return surface_.Pixels();
  };
  const auto checked = drawn(DFCS_CHECKED);
  EXPECT_NE(checked, drawn(0));
  EXPECT_NE(checked, drawn(DFCS_CHECKED | DFCS_INACTIVE));
}

}  // namespace
