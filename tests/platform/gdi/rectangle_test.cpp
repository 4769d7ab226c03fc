// Rectangles of pens, brushes and raster operations, and edges, looked at pixel by pixel.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"

namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

// Selected for the time of its life, and deleted then.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object)
      : context_(context), object_(object), before_(::SelectObject(context, object)) {}
  ~Selected() {
    ::SelectObject(context_, before_);
    ::DeleteObject(object_);
  }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ object_;
  HGDIOBJ before_;
};

// A letter for each pixel of the rows from the top: white ".", red "r", blue "b", others "?".
std::vector<std::string> Picture(const DrawingSurface& surface, int side) {
  std::vector<std::string> rows;
  for (int y = 0; y < side; ++y) {
    std::string row;
    for (int x = 0; x < side; ++x) {
      const COLORREF pixel = surface.At(x, y);
      row += pixel == kWhite ? '.' : pixel == kRed ? 'r' : pixel == kBlue ? 'b' : '?';
    }
    rows.push_back(row);
  }
  return rows;
}

using Rows = std::vector<std::string>;

Rows Drawn(const RECT& area, HPEN pen, HBRUSH brush) {
  constexpr int kSide = 8;
  const DrawingSurface surface(kSide, kSide);
  const Selected selectedPen(surface.Get(), pen);
  const Selected selectedBrush(surface.Get(), brush);
  EXPECT_TRUE(::Rectangle(surface.Get(), area.left, area.top, area.right, area.bottom));
  return Picture(surface, kSide);
}

HPEN RedPen(int width) {
  return ::CreatePen(PS_SOLID, width, kRed);
}

HBRUSH BlueBrush() {
  return ::CreateSolidBrush(kBlue);
}

HBRUSH NoBrush() {
  return static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
}

TEST(Rectangle, APenOfOnePixelStaysInsideAndTheBrushInsideOfIt) {
  OnDesktop([] {
    const Rows expected = {"........", ".rrrrr..", ".rbbbr..", ".rbbbr..",
                           ".rrrrr..", "........", "........", "........"};
    EXPECT_EQ(Drawn({1, 1, 6, 5}, RedPen(1), BlueBrush()), expected);
    EXPECT_EQ(Drawn({1, 1, 6, 5}, RedPen(0), BlueBrush()), expected);
    EXPECT_EQ(Drawn({6, 5, 1, 1}, RedPen(1), BlueBrush()), expected) << "edges given in reverse";
  });
}

TEST(Rectangle, AWidePenLiesOnBothSidesOfItsLine) {
  OnDesktop([] {
    EXPECT_EQ(Drawn({1, 1, 7, 7}, RedPen(3), BlueBrush()),
              (Rows{"rrrrrrrr", "rrrrrrrr", "rrrrrrrr", "rrrbbrrr", "rrrbbrrr", "rrrrrrrr",
                    "rrrrrrrr", "rrrrrrrr"}));
    EXPECT_EQ(Drawn({2, 2, 7, 7}, RedPen(2), NoBrush()),
              (Rows{"........", ".rrrrrr.", ".rrrrrr.", ".rr..rr.", ".rr..rr.", ".rrrrrr.",
                    ".rrrrrr.", "........"}));
  });
}

TEST(Rectangle, WithoutAPenItIsOnePixelSmaller) {
  OnDesktop([] {
    const auto none = static_cast<HPEN>(::GetStockObject(NULL_PEN));
    const Rows expected = {"........", ".bbbb...", ".bbbb...", "........",
                           "........", "........", "........", "........"};
    EXPECT_EQ(Drawn({1, 1, 6, 4}, none, BlueBrush()), expected);
    EXPECT_EQ(Drawn({1, 1, 6, 4}, ::CreatePen(PS_NULL, 3, kRed), BlueBrush()), expected);
  });
}

TEST(Rectangle, WhatHasNoInsideIsAllPen) {
  OnDesktop([] {
    const Rows expected = {"........", ".rr.....", ".rr.....", "........",
                           "........", "........", "........", "........"};
    EXPECT_EQ(Drawn({1, 1, 3, 3}, RedPen(1), BlueBrush()), expected);
    const Rows nothing(8, "........");
    EXPECT_EQ(Drawn({3, 1, 3, 5}, RedPen(1), BlueBrush()), nothing);
  });
}

TEST(Rectangle, TwiceTheExclusiveOrIsNothing) {
  OnDesktop([] {
    for (const int operation : {R2_XORPEN, R2_NOTXORPEN, R2_NOT}) {
      const DrawingSurface surface(20, 20);
      const RECT half{0, 0, 10, 20};
      const Selected brush(surface.Get(), ::CreateSolidBrush(RGB(10, 200, 30)));
      ::FillRect(surface.Get(), &half, BlueBrush());
      const Rows before = Picture(surface, 20);
      const Selected pen(surface.Get(), ::CreatePen(PS_SOLID, 3, RGB(200, 100, 50)));
      ASSERT_EQ(::SetROP2(surface.Get(), operation), R2_COPYPEN);
      EXPECT_EQ(::GetROP2(surface.Get()), operation);
      ::Rectangle(surface.Get(), 4, 4, 16, 16);
      EXPECT_NE(surface.At(3, 3), kBlue) << operation;
      EXPECT_NE(surface.At(8, 8), kBlue) << operation << ": the brush takes part";
      ::Rectangle(surface.Get(), 4, 4, 16, 16);
      EXPECT_EQ(Picture(surface, 20), before) << operation;
    }
  });
}

TEST(Rectangle, AnExclusiveOrHitsEachPixelOnce) {
  OnDesktop([] {
    const DrawingSurface surface(20, 20);
    const Selected pen(surface.Get(), ::CreatePen(PS_SOLID, 3, kWhite));
    const Selected brush(surface.Get(), NoBrush());
    ::SetROP2(surface.Get(), R2_XORPEN);
    ::Rectangle(surface.Get(), 5, 5, 15, 15);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) {
        const bool outer = x >= 4 && x < 16 && y >= 4 && y < 16;
        const bool inner = x >= 7 && x < 13 && y >= 7 && y < 13;
        EXPECT_EQ(surface.At(x, y), outer && !inner ? RGB(0, 0, 0) : kWhite) << x << "," << y;
      }
    }
  });
}

TEST(Rectangle, OtherPensAndOperationsAreRefused) {
  OnDesktop([] {
    constexpr int kDashed = 1;
    EXPECT_EQ(::CreatePen(kDashed, 1, kRed), nullptr);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
    const DrawingSurface surface(4, 4);
    constexpr int kBlackness = 1;
    EXPECT_EQ(::SetROP2(surface.Get(), kBlackness), 0);
    EXPECT_EQ(::GetROP2(surface.Get()), R2_COPYPEN);
    EXPECT_EQ(::GetROP2(nullptr), 0);
    EXPECT_FALSE(::Rectangle(nullptr, 0, 0, 4, 4));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
    const HDC screen = ::GetDC(nullptr);
    EXPECT_FALSE(::Rectangle(screen, 0, 0, 4, 4));
    ::ReleaseDC(nullptr, screen);
  });
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

TEST(Edge, ItsLinesHaveTheColoursOfTheirSides) {
  OnDesktop([] {
    for (const EdgeCase& each : kEdges) {
      const DrawingSurface surface(20, 20);
      RECT area{2, 3, 18, 17};
      ASSERT_TRUE(::DrawEdge(surface.Get(), &area, each.edge, BF_RECT | BF_MIDDLE));
      EXPECT_EQ(area.left, 2) << "not asked to be adjusted";
      for (int ring = 0; ring < 2; ++ring) {
        const COLORREF lit = ::GetSysColor(each.leftAndTop[ring]);
        const COLORREF shaded = ::GetSysColor(each.rightAndBottom[ring]);
        EXPECT_EQ(surface.At(2 + ring, 3 + ring), lit) << each.edge;
        EXPECT_EQ(surface.At(2 + ring, 10), lit) << each.edge;
        EXPECT_EQ(surface.At(10, 3 + ring), lit) << each.edge;
        EXPECT_EQ(surface.At(17 - ring, 10), shaded) << each.edge;
        EXPECT_EQ(surface.At(10, 16 - ring), shaded) << each.edge;
        EXPECT_EQ(surface.At(17 - ring, 3 + ring), shaded) << each.edge << ": upper right corner";
        EXPECT_EQ(surface.At(2 + ring, 16 - ring), shaded) << each.edge << ": lower left corner";
      }
      EXPECT_EQ(surface.At(4, 5), ::GetSysColor(COLOR_BTNFACE));
      EXPECT_EQ(surface.At(15, 14), ::GetSysColor(COLOR_BTNFACE));
      EXPECT_EQ(surface.At(1, 10), kWhite);
      EXPECT_EQ(surface.At(18, 10), kWhite);
    }
  });
}

TEST(Edge, OnlyTheSidesAskedForAreDrawnAndTakenOff) {
  OnDesktop([] {
    const DrawingSurface surface(20, 20);
    RECT area{2, 3, 18, 17};
    ASSERT_TRUE(::DrawEdge(surface.Get(), &area, EDGE_ETCHED, BF_TOP | BF_RIGHT | BF_ADJUST));
    EXPECT_EQ(area.left, 2);
    EXPECT_EQ(area.top, 5);
    EXPECT_EQ(area.right, 16);
    EXPECT_EQ(area.bottom, 17);
    EXPECT_EQ(surface.At(2, 10), kWhite) << "left";
    EXPECT_EQ(surface.At(10, 16), kWhite) << "bottom";
    EXPECT_EQ(surface.At(10, 10), kWhite) << "middle";
    EXPECT_EQ(surface.At(10, 3), ::GetSysColor(COLOR_BTNSHADOW));
  });
}

TEST(Edge, WhatIsSmallerThanItsLinesStaysInItsArea) {
  OnDesktop([] {
    const DrawingSurface surface(20, 20);
    RECT area{5, 5, 7, 15};
    ASSERT_TRUE(::DrawEdge(surface.Get(), &area, EDGE_ETCHED, BF_RECT | BF_MIDDLE));
    const auto ink = surface.Ink();
    ASSERT_TRUE(ink.has_value());
    EXPECT_GE(ink->left, 5);
    EXPECT_LE(ink->right, 7);
  });
}

TEST(Edge, OtherKindsAreRefused) {
  OnDesktop([] {
    const DrawingSurface surface(20, 20);
    RECT area{2, 3, 18, 17};
    constexpr UINT kSoft = 0x1000;
    for (const auto& [edge, flags] :
         {std::pair{EDGE_ETCHED, BF_RECT | kSoft}, std::pair{BDR_RAISEDOUTER, BF_RECT}}) {
      ::SetLastError(NO_ERROR);
      EXPECT_FALSE(::DrawEdge(surface.Get(), &area, edge, flags));
      EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
    }
    EXPECT_FALSE(::DrawEdge(surface.Get(), nullptr, EDGE_ETCHED, BF_RECT));
    EXPECT_FALSE(surface.Ink().has_value());
  });
}

}  // namespace
