#include "grid/grid_scrolling.h"

#include "grid_fixture.h"

namespace quillgate {
namespace {

using enum GridScroll;

// Thirteen rows fit, and seven columns.
class GridScrollingTest : public GridFixture {
 protected:
  GridScrolling scrolling_{slot_, system_};
};

TEST_F(GridScrollingTest, BarsAreShownJustWhenTheyAreNeeded) {
  const auto fit = [&](GridSize client, std::uint32_t rows) {
    return [=, this] {
      system_.clientSize = client;
      grid_.SetSize(rows, 3);
      EXPECT_EQ((GridSize{slot_.clientWidth, slot_.clientHeight}), system_.ClientSize());
    };
  };
  const std::string neither = "ShowBar vertical 0; ShowBar horizontal 0";
  const std::string vertical = "ShowBar vertical 1; ShowBar horizontal 0";
  const std::string horizontal = "ShowBar vertical 0; ShowBar horizontal 1";
  const std::string both = "ShowBar vertical 1; ShowBar horizontal 1";
  system_.barSize = {17, 17};
  // Seven rows and three columns need 200 x 168 pixels.
  ExpectAsked({"ShowBar"}, {{"just room", fit({200, 168}, 7), neither},
                            {"one line too low", fit({217, 167}, 7), vertical},
                            {"one column of pixels too narrow", fit({199, 185}, 7), horizontal},
                            {"the vertical bar takes the columns' room", fit({216, 167}, 7), both},
                            {"the horizontal bar takes the rows' room", fit({199, 184}, 7), both},
                            {"both by themselves", fit({100, 100}, 7), both},
                            {"room again after both", fit({200, 168}, 7), neither},
                            {"no rows", fit({300, 21}, 0), neither}});
}

TEST_F(GridScrollingTest, RangesCountRowsAndShownColumnsAndHiddenBarsGetNone) {
  const auto size = [&](std::uint32_t rows, std::int32_t cols) {
    return [=, this] { grid_.SetSize(rows, cols); };
  };
  slot_.colWidth[3] = slot_.colWidth[8] = 0;
  PutHome({60, 4});
  ExpectAsked(
      {"SetBar"},
      {{"both", size(100, 10),
        "SetBarRange vertical 88; SetBarRange horizontal 8; "
        "SetBarPosition vertical 60; SetBarPosition horizontal 3"},
       {"scrolled past the rows", size(40, 10),
        "SetBarRange vertical 28; SetBarRange horizontal 8; "
        "SetBarPosition vertical 28; SetBarPosition horizontal 3"},
       {"no horizontal one", size(40, 3),
        "SetBarRange vertical 28; "
        "SetBarPosition vertical 28; SetBarPosition horizontal 1"},
       {"no vertical one", size(13, 10),
        "SetBarRange horizontal 8; SetBarPosition vertical 1; SetBarPosition horizontal 1"}});
  PutHome({1, 10});
  slot_.colWidth.fill(50);
  grid_.SetSize(13, 8);
  EXPECT_EQ(Home(), (GridCell{1, 8})) << "scrolled past the columns";
}

TEST_F(GridScrollingTest, RequestsMoveHomeWithinTheBars) {
  const auto vertical = [&](std::int32_t homeRow, GridScroll request, std::int32_t place = 0) {
    return [=, this] {
      slot_.homeRow = homeRow;
      scrolling_.OnVertical(request, place);
    };
  };
  const std::string top = "TakeFocus; SetBarPosition vertical 1";
  const std::string row = "TakeFocus; InvalidateAll; SetBarPosition vertical ";
  const std::string lastRow = "TakeFocus; InvalidateAll erase; SetBarPosition vertical 88";
  ExpectAsked({"TakeFocus", "InvalidateAll", "SetBarPosition vertical"},
              {{"line on", vertical(1, kLineOn), row + "2"},
               {"line back", vertical(2, kLineBack), row + "1"},
               {"line back at the top", vertical(1, kLineBack), top},
               {"page on", vertical(2, kPageOn), row + "15"},
               {"page back", vertical(20, kPageBack), row + "7"},
               {"page back to the top", vertical(9, kPageBack), row + "1"},
               {"line on to the end", vertical(87, kLineOn), lastRow},
               {"page on past the end", vertical(80, kPageOn), lastRow},
               {"thumb", vertical(1, kThumb, 33), row + "33"},
               {"thumb past the end", vertical(1, kThumb, 900), lastRow},
               {"thumb before the beginning", vertical(7, kThumb, -4), row + "1"}});

  const auto horizontal = [&](std::int32_t homeCol, GridScroll request, std::int32_t place = 0) {
    return [=, this] {
      slot_.homeCol = homeCol;
      scrolling_.OnHorizontal(request, place);
    };
  };
  const std::string col = "TakeFocus; InvalidateAll; SetBarPosition horizontal ";
  const std::string lastCol = "TakeFocus; InvalidateAll erase; SetBarPosition horizontal 9";
  slot_.colWidth[3] = 0;  // so column 4 has position 3
  ExpectAsked({"TakeFocus", "InvalidateAll", "SetBarPosition horizontal"},
              {{"back to the first", horizontal(2, kLineBack), col + "1"},
               {"past a hidden column", horizontal(2, kLineOn), col + "3"},
               {"back past a hidden column", horizontal(4, kLineBack), col + "2"},
               {"a page is a column", horizontal(4, kPageOn), col + "4"},
               {"and back", horizontal(5, kPageBack), col + "3"},
               {"last column", horizontal(9, kLineOn), lastCol},
               {"thumb to a column", horizontal(1, kThumb, 3), col + "3"},
               {"thumb past the last", horizontal(1, kThumb, 99), lastCol}});
}

TEST_F(GridScrollingTest, TakingTheFocusScrollsToTheCursorFirst) {
  slot_.cursorRow = 50;
  When("TakeFocus", [](Grid& grid) { grid.OnFocusGained(); });
  scrolling_.OnVertical(kLineOn, 0);
  EXPECT_EQ(slot_.homeRow, 50 - 13 + 1 + 1);
}

TEST_F(GridScrollingTest, AGridWithoutAnythingToScrollStaysAtItsBeginning) {
  slot_.rows = 0;
  slot_.colWidth.fill(0);
  for (const GridScroll request : {kLineBack, kPageOn, kThumb}) {
    scrolling_.OnVertical(request, 7);
    scrolling_.OnHorizontal(request, 7);
    EXPECT_EQ(Home(), (GridCell{1, 1}));
    EXPECT_TRUE(Take().ends_with("SetBarPosition vertical 1; SetBarPosition horizontal 1"));
  }
}

TEST_F(GridScrollingTest, TheCursorIsBroughtIntoViewByTheLeastThatShowsItWhole) {
  const auto bring = [&](GridCell home, GridCell cursor, GridCell after) {
    return [=, this] {
      PutHome(home);
      PutCursor(cursor);
      scrolling_.BringCursorIntoView();
      EXPECT_EQ(Home(), after);
    };
  };
  const std::string bar = "SetBarPosition vertical ";
  const std::string scrolled = "InvalidateAll; " + bar;
  // There is room for 350 pixels of columns.
  slot_.colWidth[5] = 100;
  slot_.colWidth[6] = slot_.colWidth[9] = 0;
  slot_.colWidth[8] = 500;
  ExpectAsked(
      {"InvalidateAll", "SetBarPosition vertical"},
      {{"shown", bring({3, 2}, {4, 3}, {3, 2}), bar + "3"},
       {"row above", bring({10, 1}, {4, 1}, {4, 1}), scrolled + "4"},
       {"last whole row", bring({3, 1}, {15, 1}, {3, 1}), bar + "3"},
       {"row that is cut", bring({3, 1}, {16, 1}, {4, 1}), scrolled + "4"},
       {"row far below", bring({1, 1}, {100, 1}, {88, 1}), scrolled + "88"},
       {"column to the left", bring({1, 5}, {1, 3}, {1, 3}), scrolled + "1"},
       {"last whole column", bring({1, 1}, {1, 7}, {1, 1}), bar + "1"},
       {"wider than the window", bring({1, 1}, {1, 8}, {1, 8}), scrolled + "1"},
       {"behind the wide one and a hidden one", bring({1, 1}, {1, 10}, {1, 10}), scrolled + "1"},
       {"past the last", bring({1, 1}, {101, 11}, {88, 10}), scrolled + "88"}});
  slot_.clientWidth = 399;
  ExpectAsked({"InvalidateAll", "SetBarPosition vertical"},
              {{"column that is cut", bring({1, 1}, {1, 7}, {1, 2}), scrolled + "1"}});
}

TEST_F(GridScrollingTest, ARowHigherThanTheWindowIsShownFromItsTop) {
  slot_.rowHeight = 1'000;
  for (const std::int32_t row : {40, 39}) {
    slot_.cursorRow = row;
    scrolling_.BringCursorIntoView();
    EXPECT_EQ(slot_.homeRow, row);
  }
  scrolling_.OnVertical(kThumb, 101);
  EXPECT_EQ(slot_.homeRow, 100);
}

}  // namespace
}  // namespace quillgate
