#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

class GridLooksTest : public GridFixture {
 protected:
  GridLooksTest() { slot_.cols = 255; }

  // What has been asked, but for the scroll bars.
  std::vector<std::string> TakeWithoutBars() {
    std::vector<std::string> calls;
    for (std::string& call : system_.Take())
      if (!call.starts_with("ShowBar") && !call.starts_with("SetBar"))
        calls.push_back(std::move(call));
    return calls;
  }
};

TEST_F(GridLooksTest, EachMessageNotesTheClientAreasSize) {
  system_.clientSize = {123, 45};
  Grid(slot_, system_);
  EXPECT_EQ(slot_.clientWidth, 123);
  EXPECT_EQ(slot_.clientHeight, 45);
}

// The cursor stands before the first row shown, so that no frame is drawn.
TEST_F(GridLooksTest, EachMessageRepaintsAndRefreshesAsItIsDocumented) {
  const std::vector<std::string> none;
  const std::vector<std::string> plain{"InvalidateAll"};
  const std::vector<std::string> erased{"InvalidateAll erase"};
  const std::vector<std::string> refreshed{"SendSize 400,300", "SendSize 400,300", "InvalidateAll"};
  struct Case {
    const char* what;
    std::function<void()> act;
    std::vector<std::string> calls;
    bool updatesBars;
  };
  const Case cases[] = {
      {"default protection", [&] { grid_.SetDefaultProtect(true); }, none, false},
      {"size", [&] { grid_.SetSize(80, 255); }, erased, true},
      {"column's width", [&] { grid_.SetColWidth(1, 51); }, plain, true},
      {"headings' height", [&] { grid_.SetHeaderHeight(22); }, refreshed, true},
      {"spare flag", [&] { grid_.SetSpareFlag(true); }, refreshed, false},
      {"colour", [&] { grid_.SetColour(&GridSlot::protectColor, 1); }, plain, false},
      {"flag", [&] { grid_.SetFlag(&GridSlot::ellipsis, false); }, plain, false},
      {"font of the title", [&] { grid_.SetFontOf(&GridSlot::titleFont, 4); }, plain, false},
      {"font", [&] { grid_.SetFont(5); }, plain, false},
      {"cursor's colour", [&] { grid_.SetCursorColor(0); }, plain, false},
      {"lines' colour", [&] { grid_.SetGridLineColor(0); }, plain, false},
      {"refresh", [&] { grid_.Refresh(); }, {"InvalidateAll erase", "PaintNow"}, false},
      {"clear", [&] { grid_.Clear(); }, erased, true},
  };
  slot_.homeRow = 2;
  for (const Case& each : cases) {
    system_.barsShown.clear();
    each.act();
    EXPECT_THAT(TakeWithoutBars(), ElementsAreArray(each.calls)) << each.what;
    EXPECT_EQ(!system_.barsShown.empty(), each.updatesBars) << each.what;
  }
}

TEST_F(GridLooksTest, HeightsKeepTheCursorInView) {
  slot_.cursorRow = 12;  // the last one that fits
  grid_.SetRowHeight(30);
  EXPECT_EQ(slot_.homeRow, 4);
  EXPECT_THAT(TakeWithoutBars(), ElementsAre("InvalidateAll", "SendSize 400,300",
                                             "SendSize 400,300", "InvalidateAll"));
  grid_.SetTitleHeight(60);
  EXPECT_EQ(slot_.homeRow, 6);
  EXPECT_THAT(TakeWithoutBars(), ElementsAre("InvalidateAll", "InvalidateAll"));
}

TEST_F(GridLooksTest, ABarComesWithTheHeightThatMakesItNecessary) {
  grid_.SetSize(10, 3);
  EXPECT_FALSE(system_.barsShown[GridBar::kVertical]);
  grid_.SetRowHeight(28);
  EXPECT_TRUE(system_.barsShown[GridBar::kVertical]);
  grid_.SetRowHeight(27);
  EXPECT_FALSE(system_.barsShown[GridBar::kVertical]);
  grid_.SetHeaderHeight(31);
  EXPECT_TRUE(system_.barsShown[GridBar::kVertical]);
  grid_.SetHeaderHeight(0);
  grid_.SetTitleHeight(31);
  EXPECT_TRUE(system_.barsShown[GridBar::kVertical]);
  grid_.SetTitleHeight(0);
  EXPECT_FALSE(system_.barsShown[GridBar::kVertical]);
  system_.lineHeights[slot_.titleFont] = 26;
  grid_.SetTitle(L"Hours");
  EXPECT_TRUE(system_.barsShown[GridBar::kVertical]);
  grid_.Clear();
  EXPECT_FALSE(system_.barsShown[GridBar::kVertical]);
}

TEST_F(GridLooksTest, ClearingForgetsCellsAndRowsButNotTheCursorsColumn) {
  grid_.SetCell({5, 5}, L"x");
  slot_.cursorRow = slot_.cursorCol = slot_.homeRow = slot_.homeCol = 5;
  grid_.Clear();
  EXPECT_EQ(slot_.cellStore.Size(), 0u);
  EXPECT_EQ(slot_.rows, 0);
  EXPECT_EQ(slot_.Cursor(), (GridCell{1, 5}));
  EXPECT_EQ(slot_.homeRow, 1);
  EXPECT_EQ(slot_.homeCol, 1);
}

TEST_F(GridLooksTest, TheSizeIsKeptWithinTheLimits) {
  struct Case {
    std::uint32_t rows;
    std::int32_t cols, keptRows, keptCols;
  };
  const Case cases[] = {
      {40000, 0, 32000, 1}, {32001, 257, 32000, 256},        {32000, 256, 32000, 256},
      {0, -1, 0, 1},        {0xFFFFFFFF, kMost, 32000, 256}, {7, 24, 7, 24}};
  for (const Case& each : cases) {
    grid_.SetSize(each.rows, each.cols);
    EXPECT_EQ(slot_.rows, each.keptRows) << each.rows;
    EXPECT_EQ(slot_.cols, each.keptCols) << each.cols;
  }
}

TEST_F(GridLooksTest, TheCursorGoesOnlyWhereThereAreRowsAndColumns) {
  grid_.SetSize(50, 20);
  system_.Take();
  for (const GridCell nowhere : {GridCell{0, 1}, {51, 1}, {1, 0}, {1, 21}, {-1, 1}, {1, -1}}) {
    grid_.SetCursorPos(nowhere.row, nowhere.col);
    EXPECT_EQ(slot_.Cursor(), (GridCell{1, 1}));
    EXPECT_THAT(system_.Take(), IsEmpty());
  }
  grid_.SetCursorPos(50, 20);
  EXPECT_EQ(slot_.Cursor(), (GridCell{50, 20}));
  EXPECT_EQ(slot_.homeRow, 38);
  EXPECT_EQ(system_.calls.back(), "InvalidateAll");
  grid_.SetCursorPos(1, 1);
  EXPECT_EQ(slot_.Cursor(), (GridCell{1, 1}));
  EXPECT_THAT(system_.CallsOf("Notify"), IsEmpty());
}

TEST_F(GridLooksTest, OnlyColumnsThatExistGetAWidth) {
  grid_.SetColWidth(256, 7);
  grid_.SetColWidth(0, 0);
  EXPECT_EQ(slot_.colWidth[256], 7);
  EXPECT_EQ(slot_.colWidth[0], 0);
  system_.Take();
  grid_.SetColWidth(257, 7);
  grid_.SetColWidth(0xFFFFFFFF, 7);
  grid_.SetColWidth(1, -1);
  EXPECT_EQ(slot_.colWidth[1], 50);
  EXPECT_THAT(system_.Take(), IsEmpty());
}

TEST_F(GridLooksTest, ARowIsAtLeastOnePixelHighAndBandsAreNotNegative) {
  for (const std::int32_t height : {0, -1}) {
    grid_.SetRowHeight(height);
    grid_.SetHeaderHeight(height);
    grid_.SetTitleHeight(height);
    EXPECT_EQ(slot_.rowHeight, 1);
    EXPECT_EQ(slot_.headerHeight, 0);
    EXPECT_EQ(slot_.titleHeight, 0);
  }
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
  EXPECT_EQ(slot_.Cursor(), (GridCell{32000, 256}));
}

TEST_F(GridLooksTest, ACursorBeyondASmallerSizeStaysAndTheGridIsPaintedWithoutIt) {
  grid_.SetCursorPos(90, 200);
  grid_.SetSize(3, 2);
  EXPECT_EQ(slot_.Cursor(), (GridCell{90, 200}));
  system_.Take();
  grid_.Paint();
  EXPECT_THAT(system_.CallsOf("PutText"), Contains(testing::HasSubstr("|3|")));
  grid_.OnMouseMove({60, 25});
  EXPECT_EQ(system_.CallsOf("NotifyMouseMove"), std::vector<std::string>{"NotifyMouseMove 1,1"});
}

TEST_F(GridLooksTest, OnlyAFrameThatStandsIsTakenOffWithTheOldColourAndDrawnWithTheNew) {
  grid_.SetCursorColor(0x0000AA);
  EXPECT_THAT(system_.Take(), ElementsAre("XorFrame 50,21,100,42 aa", "InvalidateAll"));
  grid_.SetCursorColor(0x00FF00);
  EXPECT_THAT(system_.Take(), ElementsAre("XorFrame 50,21,100,42 aa", "XorFrame 50,21,100,42 ff00",
                                          "InvalidateAll"));
  grid_.SetGridLineColor(0x0000FF);
  EXPECT_EQ(slot_.gridLineColor, 0x0000FFu);
  EXPECT_THAT(system_.Take(), ElementsAre("XorFrame 50,21,100,42 ff00",
                                          "XorFrame 50,21,100,42 ff00", "InvalidateAll"));
}

TEST_F(GridLooksTest, ATitleMakesRoomForItsLinesAndAFifthMore) {
  slot_.titleFont = 3;
  const std::pair<std::wstring, std::int32_t> titles[] = {
      {L"", 0}, {L"Hours", 22}, {L"Hours\nof Anna", 45}, {L"Hours\n", 45}, {L"1\n2\n3", 68}};
  system_.lineHeights[3] = 19;  // 22.8 a line
  for (const auto& [title, height] : titles) {
    grid_.SetTitle(title);
    EXPECT_EQ(slot_.title, title);
    EXPECT_EQ(slot_.titleHeight, height);
    EXPECT_THAT(TakeWithoutBars(),
                ElementsAre("InvalidateAll", "SendSize 400,300", "SendSize 400,300"));
  }
}

TEST_F(GridLooksTest, ATitleThatIsTooLongIsReplaced) {
  grid_.SetTitle(std::wstring(300, L'x'));
  EXPECT_EQ(slot_.title, std::wstring(300, L'x'));
  grid_.SetTitle(std::wstring(301, L'x'));
  EXPECT_EQ(slot_.title, L"Title too long (300 chars max)");
}

TEST_F(GridLooksTest, AFontIsForHeadingsAndTitleUntilTheyHaveTheirs) {
  grid_.SetFont(5);
  EXPECT_EQ(slot_.headingFont, 5u);
  EXPECT_EQ(slot_.titleFont, 5u);
  grid_.SetFontOf(&GridSlot::titleFont, 6);
  grid_.SetFont(7);
  EXPECT_EQ(slot_.cellFont, 7u);
  EXPECT_EQ(slot_.headingFont, 5u);
  EXPECT_EQ(slot_.titleFont, 6u);
}

TEST_F(GridLooksTest, ASizeIsNotedUnlessItIsTheOneToSkip) {
  grid_.OnSize({500, 200});
  slot_.skipNextSize = true;
  grid_.OnSize({7, 7});
  EXPECT_EQ(slot_.savedWidth, 500);
  EXPECT_EQ(slot_.savedHeight, 200);
  EXPECT_FALSE(slot_.skipNextSize);
  grid_.OnSize({8, 9});
  EXPECT_EQ(slot_.savedWidth, 8);
  EXPECT_EQ(slot_.savedHeight, 9);
  EXPECT_THAT(system_.Take(), IsEmpty());
}

}  // namespace
}  // namespace quillgate
