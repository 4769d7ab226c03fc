#include <limits>

#include "grid_fixture.h"

namespace quillgate {
namespace {

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

class GridLooksTest : public GridFixture {
 protected:
  GridLooksTest() { slot_.cols = 255; }
};

// The cursor stands before the first row shown, so that no frame is drawn.
TEST_F(GridLooksTest, EachMessageRepaintsAndRefreshesAsItIsDocumented) {
  const std::string repaint = "InvalidateAll";
  const std::string erase = "InvalidateAll erase";
  const std::string refresh = "SendSize 400,300; SendSize 400,300";
  const std::string bars = "ShowBar vertical 1";
  slot_.homeRow = 2;
  ExpectAsked({"Invalidate", "Send", "Paint", "Notify", "XorFrame", "ShowBar vertical"},
              {{"default protection", [&] { grid_.SetDefaultProtect(true); }, ""},
               {"size", [&] { grid_.SetSize(80, 255); }, erase + "; " + bars},
               {"column's width", [&] { grid_.SetColWidth(1, 51); }, repaint + "; " + bars},
               {"headings' height", [&] { grid_.SetHeaderHeight(22); },
                bars + "; " + refresh + "; " + repaint},
               {"title", [&] { grid_.SetTitle(L"Hours"); }, bars + "; " + repaint + "; " + refresh},
               {"spare flag", [&] { grid_.SetSpareFlag(true); }, refresh + "; " + repaint},
               {"colour", [&] { grid_.SetColour(&GridSlot::protectColor, 1); }, repaint},
               {"flag", [&] { grid_.SetFlag(&GridSlot::ellipsis, false); }, repaint},
               {"font of the title", [&] { grid_.SetFontOf(&GridSlot::titleFont, 4); }, repaint},
               {"font", [&] { grid_.SetFont(5); }, repaint},
               {"cursor's colour", [&] { grid_.SetCursorColor(0); }, repaint},
               {"lines' colour", [&] { grid_.SetGridLineColor(0); }, repaint},
               {"refresh", [&] { grid_.Refresh(); }, erase + "; PaintNow"},
               {"clear", [&] { grid_.Clear(); }, erase + "; ShowBar vertical 0"}});
}

TEST_F(GridLooksTest, HeightsKeepTheCursorInView) {
  slot_.cursorRow = 12;  // the last one that fits
  ExpectAsked({"Invalidate", "SendSize", "SetBarPosition vertical"},
              {{"row", [&] { grid_.SetRowHeight(30); },
                "SetBarPosition vertical 1; InvalidateAll; SetBarPosition vertical 4; "
                "SendSize 400,300; SendSize 400,300; InvalidateAll"},
               {"title", [&] { grid_.SetTitleHeight(60); },
                "SetBarPosition vertical 4; InvalidateAll; SetBarPosition vertical 6; "
                "InvalidateAll"}});
}

TEST_F(GridLooksTest, ABarComesWithTheHeightThatMakesItNecessary) {
  system_.fonts[slot_.titleFont].height = 26;
  const std::string shown = "ShowBar vertical 1";
  const std::string hidden = "ShowBar vertical 0";
  ExpectAsked({"ShowBar vertical"}, {{"ten rows", [&] { grid_.SetSize(10, 3); }, hidden},
                                     {"higher rows", [&] { grid_.SetRowHeight(28); }, shown},
                                     {"just lower", [&] { grid_.SetRowHeight(27); }, hidden},
                                     {"higher headings", [&] { grid_.SetHeaderHeight(31); }, shown},
                                     {"no headings", [&] { grid_.SetHeaderHeight(0); }, hidden},
                                     {"title band", [&] { grid_.SetTitleHeight(31); }, shown},
                                     {"no title band", [&] { grid_.SetTitleHeight(0); }, hidden},
                                     {"title", [&] { grid_.SetTitle(L"Hours"); }, shown}});
}

TEST_F(GridLooksTest, ClearingForgetsCellsAndRowsButNotTheCursorsColumn) {
  grid_.SetCell({5, 5}, L"x");
  PutCursor({5, 5});
  PutHome({5, 5});
  grid_.Clear();
  EXPECT_EQ(slot_.cellStore.Size(), 0u);
  EXPECT_EQ(slot_.rows, 0);
  EXPECT_EQ(slot_.Cursor(), (GridCell{1, 5}));
  EXPECT_EQ(Home(), (GridCell{1, 1}));
}

TEST_F(GridLooksTest, SizesAreBroughtIntoTheirLimitsAndTheCursorStays) {
  PutCursor({90, 200});
  const std::tuple<std::uint32_t, std::int32_t, std::int32_t, std::int32_t> cases[] = {
      {40000, 0, 32000, 1}, {32001, 257, 32000, 256},        {32000, 256, 32000, 256},
      {0, -1, 0, 1},        {0xFFFFFFFF, kMost, 32000, 256}, {7, 24, 7, 24}};
  for (const auto& [rows, cols, keptRows, keptCols] : cases) {
    grid_.SetSize(rows, cols);
    EXPECT_EQ(slot_.rows, keptRows) << rows;
    EXPECT_EQ(slot_.cols, keptCols) << cols;
  }
  for (const std::int32_t height : {0, -1}) {
    grid_.SetRowHeight(height);
    grid_.SetHeaderHeight(height);
    grid_.SetTitleHeight(height);
    EXPECT_EQ(slot_.rowHeight, 1);
    EXPECT_EQ(slot_.headerHeight, 0);
    EXPECT_EQ(slot_.titleHeight, 0);
  }
  EXPECT_EQ(slot_.Cursor(), (GridCell{90, 200}));
}

TEST_F(GridLooksTest, TheCursorGoesOnlyWhereThereAreRowsAndColumns) {
  grid_.SetSize(50, 20);
  Take();
  for (const GridCell nowhere : {GridCell{0, 1}, {51, 1}, {1, 0}, {1, 21}, {-1, 1}, {1, -1}})
    grid_.SetCursorPos(nowhere.row, nowhere.col);
  EXPECT_EQ(Take(), "");
  for (const GridCell cell : {GridCell{50, 20}, {1, 1}}) {
    grid_.SetCursorPos(cell.row, cell.col);
    EXPECT_EQ(slot_.Cursor(), cell);
    EXPECT_EQ(slot_.homeRow, cell.row == 50 ? 38 : 1);
    EXPECT_TRUE(Take({"InvalidateAll", "Notify"}).ends_with("InvalidateAll; InvalidateAll"));
  }
}

TEST_F(GridLooksTest, OnlyColumnsThatExistGetAWidthAndOnlyOneThatIsNotNegative) {
  grid_.SetColWidth(256, 7);
  grid_.SetColWidth(0, 0);
  EXPECT_EQ(slot_.colWidth[256], 7);
  EXPECT_EQ(slot_.colWidth[0], 0);
  Take();
  grid_.SetColWidth(257, 7);
  grid_.SetColWidth(0xFFFFFFFF, 7);
  grid_.SetColWidth(1, -1);
  EXPECT_EQ(slot_.colWidth[1], 50);
  EXPECT_EQ(Take(), "");
}

// Run with checks for overflow.
TEST_F(GridLooksTest, SizesBeyondAllMeasureAreWithstood) {
  grid_.SetRowHeight(kMost);
  grid_.SetHeaderHeight(kMost);
  grid_.SetTitleHeight(kMost);
  for (std::uint32_t col = 0; col <= 256; ++col)
    grid_.SetColWidth(col, kMost);
  grid_.SetSize(32000, 256);
  grid_.SetCursorPos(32000, 256);
  grid_.Paint();
  grid_.OnMouseMove({kMost, kMost});
  grid_.SetCell({32000, 256}, L"x");
  grid_.SetCell({kLeast, kLeast}, L"x");
  EXPECT_EQ(slot_.Cursor(), (GridCell{32000, 256}));
}

TEST_F(GridLooksTest, OnlyAFrameThatStandsIsTakenOffWithTheOldColourAndDrawnWithTheNew) {
  const std::string frame = "XorFrame 50,21,100,42 ";
  ExpectAsked({""},
              {{"none before", [&] { grid_.SetCursorColor(0xAA); }, frame + "aa; InvalidateAll"},
               {"cursor's", [&] { grid_.SetCursorColor(0xFF00); },
                frame + "aa; " + frame + "ff00; InvalidateAll"},
               {"lines'", [&] { grid_.SetGridLineColor(0xFF); },
                frame + "ff00; " + frame + "ff00; InvalidateAll"}});
  EXPECT_EQ(slot_.gridLineColor, 0xFFu);
}

TEST_F(GridLooksTest, ATitleMakesRoomForItsLinesAndAFifthMore) {
  slot_.titleFont = 3;
  system_.fonts[3].height = 19;  // 22.8 a line
  const std::wstring full(300, L'x');
  const std::tuple<std::wstring, std::wstring, std::int32_t> cases[] = {
      {L"", L"", 0},
      {L"Hours", L"Hours", 22},
      {L"Hours\n", L"Hours\n", 45},
      {L"1\n2\n3", L"1\n2\n3", 68},
      {full, full, 22},
      {full + L"x", L"Title too long (300 chars max)", 22}};
  for (const auto& [title, kept, height] : cases) {
    grid_.SetTitle(title);
    EXPECT_EQ(slot_.title, kept);
    EXPECT_EQ(slot_.titleHeight, height) << kept;
  }
}

TEST_F(GridLooksTest, AFontIsForHeadingsAndTitleUntilTheyHaveTheirs) {
  const auto fonts = [&] { return std::tuple(slot_.cellFont, slot_.headingFont, slot_.titleFont); };
  grid_.SetFont(5);
  EXPECT_EQ(fonts(), std::tuple(5u, 5u, 5u));
  grid_.SetFontOf(&GridSlot::titleFont, 6);
  grid_.SetFont(7);
  EXPECT_EQ(fonts(), std::tuple(7u, 5u, 6u));
}

TEST_F(GridLooksTest, ASizeIsNotedUnlessItIsTheOneToSkip) {
  grid_.OnSize({500, 200});
  slot_.skipNextSize = true;
  grid_.OnSize({7, 7});
  grid_.RefreshLayout();
  EXPECT_EQ(Take(), "SendSize 500,200; SendSize 500,200");
  EXPECT_FALSE(slot_.skipNextSize);
}

}  // namespace
}  // namespace quillgate
