// Edges and check boxes that a window paints itself.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "platform/gdi/drawing_surface.h"

namespace {

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

class Edge : public DrawingTest {
 protected:
  const DrawingSurface surface_{20, 20};
};

TEST_F(Edge, LinesHaveTheColoursOfTheirSides) {
  for (const EdgeCase& each : kEdges) {
    SCOPED_TRACE(each.edge);
    surface_.Clear();
    RECT area{2, 3, 18, 17};
    ASSERT_TRUE(::DrawEdge(surface_.Get(), &area, each.edge, BF_RECT | BF_MIDDLE));
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
  ASSERT_TRUE(::DrawEdge(surface_.Get(), &area, EDGE_ETCHED, BF_TOP | BF_RIGHT | BF_ADJUST));
  EXPECT_EQ(area, (RECT{2, 5, 16, 17}));
  EXPECT_EQ(surface_.At(2, 10), kWhite) << "left";
  EXPECT_EQ(surface_.At(10, 16), kWhite) << "bottom";
  EXPECT_EQ(surface_.At(10, 10), kWhite) << "middle";
  EXPECT_EQ(surface_.At(10, 3), ::GetSysColor(COLOR_BTNSHADOW));
}

TEST_F(Edge, AnAreaSmallerThanItsLinesIsNotLeft) {
  RECT area{5, 5, 7, 15};
  ASSERT_TRUE(::DrawEdge(surface_.Get(), &area, EDGE_ETCHED, BF_RECT | BF_MIDDLE));
  const RECT ink = surface_.Ink().value();
  EXPECT_GE(ink.left, 5);
  EXPECT_LE(ink.right, 7);
}

class CheckBox : public DrawingTest {
 protected:
  std::vector<COLORREF> Drawn(UINT state, RECT area) const {
    surface_.Clear();
    EXPECT_TRUE(::DrawFrameControl(surface_.Get(), &area, DFC_BUTTON, DFCS_BUTTONCHECK | state));
    return surface_.Pixels();
  }

  const DrawingSurface surface_{60, 40};
};

TEST_F(CheckBox, TheBoxIsTheLargestSquareInTheMiddle) {
  Drawn(0, {5, 10, 55, 26});
  const RECT ink = surface_.Ink().value();
  EXPECT_GE(ink.left, 22);
  EXPECT_LE(ink.right, 38);
  EXPECT_GE(ink.top, 10);
  EXPECT_LE(ink.bottom, 26);
  EXPECT_GE(ink.right - ink.left, 13);
  EXPECT_GE(ink.bottom - ink.top, 13);
}

TEST_F(CheckBox, StatesLookDifferent) {
  constexpr RECT kArea{10, 10, 26, 26};
  const auto clear = Drawn(0, kArea);
  const auto checked = Drawn(DFCS_CHECKED, kArea);
  EXPECT_NE(checked, clear);
  EXPECT_NE(Drawn(DFCS_CHECKED | DFCS_INACTIVE, kArea), checked);
}

}  // namespace
