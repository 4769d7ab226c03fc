#include "grid_fixture.h"

namespace quillgate {
namespace {

class GridMouseTest : public GridFixture {
 protected:
  GridMouseTest() {
    slot_.colResize = true;
    slot_.extendLastCol = false;
  }

  void DragFrom(std::int32_t x) {
    grid_.OnMouseMove({x, 10});
    grid_.OnButtonDown({x, 10});
  }
};

TEST_F(GridMouseTest, EveryMoveIsNotifiedAndThePointerShowsWhereABorderCanBeDragged) {
  const auto move = [&](GridPoint point) { return [=, this] { grid_.OnMouseMove(point); }; };
  const auto told = [](const std::string& cell, const std::string& pointer) {
    return "NotifyMouseMove " + cell + "; SetPointer " + pointer;
  };
  ExpectAsked({""}, {{"in the middle of a column", move({75, 10}), told("0,1", "arrow")},
                     {"just too far left", move({89, 10}), told("0,1", "arrow")},
                     {"left of a border", move({90, 10}), told("0,1", "column")},
                     {"right of a border", move({109, 10}), told("0,2", "column")},
                     {"just too far right", move({110, 10}), told("0,2", "arrow")},
                     {"at the heading column's border", move({45, 10}), told("0,0", "column")},
                     {"right of the last column", move({555, 10}), told("0,-1", "column")},
                     {"beside the columns", move({570, 10}), told("0,-1", "arrow")},
                     {"on a cell", move({120, 63}), told("3,2", "arrow")},
                     {"above the headings", move({100, 0}), told("-1,2", "arrow")},
                     {"far out", move({-5, -5}), told("-1,0", "arrow")}});
  slot_.colResize = false;
  ExpectAsked({""}, {{"not to be dragged", move({100, 10}), told("0,2", "arrow")}});
}

TEST_F(GridMouseTest, TheColumnBeforeTheBorderIsDragged) {
  const std::tuple<const char*, std::int32_t, std::int32_t, std::int32_t> cases[] = {
      {"left of the border", 1, 145, 2},
      {"right of the border", 1, 151, 2},
      {"heading column", 1, 45, 0},
      {"heading column from the right", 1, 55, 0},
      {"last column", 1, 545, 10},
      {"last column from beside it", 1, 555, 10},
      {"scrolled", 4, 95, 4},
      {"scrolled, from the right", 4, 105, 4},
      {"heading column, scrolled", 4, 55, 0},
  };
  for (const auto& [what, homeCol, x, col] : cases) {
    slot_.homeCol = homeCol;
    DragFrom(x);
    EXPECT_EQ(slot_.resizeCol, col) << what;
    grid_.OnButtonUp({x, 10});
  }
}

TEST_F(GridMouseTest, ADragWidensItsColumnTheScrollBarFollowsAndTheButtonEndsIt) {
  const auto move = [&](std::int32_t x, std::int32_t width) {
    return [=, this] {
      grid_.OnMouseMove({x, 200});
      EXPECT_EQ(slot_.colWidth[2], width);
    };
  };
  const auto release = [&] { grid_.OnButtonUp(GridPoint{170, 200}); };
  const std::string fits = "InvalidateAll; ShowBar horizontal 0";
  const std::string scrolls = "InvalidateAll; ShowBar horizontal 1";
  grid_.SetSize(100, 7);
  DragFrom(148);
  EXPECT_FALSE(slot_.spareFlag);
  ExpectAsked({"InvalidateAll", "ShowBar horizontal", "SetPointer", "SendSize"},
              {{"only down", move(148, 50), ""},
               {"wider", move(149, 51), scrolls},
               {"narrower", move(108, 10), fits},
               {"to nothing", move(90, 0), fits},
               {"past that", move(-50, 0), ""},
               {"wider again", move(170, 72), scrolls},
               {"release", release, "SetPointer arrow; SendSize 400,300; SendSize 400,300"},
               {"afterwards", move(200, 72), "SetPointer arrow"},
               {"release of no drag", release, ""}});
  EXPECT_TRUE(slot_.spareFlag);
}

TEST_F(GridMouseTest, AClickCommitsWhatWasTypedMovesTheCursorAndTellsWhatHasChanged) {
  const auto click = [&](GridPoint point, GridCell after) {
    return [=, this] {
      PutCursor({1, 1});
      grid_.OnButtonDown(point);
      EXPECT_EQ(slot_.Cursor(), after);
    };
  };
  const std::string focus = "TakeFocus";
  grid_.SetSize(10, 6);
  slot_.editing = true;
  slot_.editText = L"typed";
  ExpectAsked(
      {"TakeFocus", "Notify"},
      {{"row and column, after typing", click({125, 70}, {3, 2}),
        "Notify 10 1,1; Notify 25 3,2; Notify 6 3,2; Notify 5 3,2; Notify 7 3,2; Notify 5 3,2"},
       {"row", click({75, 70}, {3, 1}), focus + "; Notify 25 3,1; Notify 6 3,1; Notify 5 3,1"},
       {"column", click({125, 30}, {1, 2}), focus + "; Notify 25 1,2; Notify 7 1,2; Notify 5 1,2"},
       {"the cursor's cell", click({75, 30}, {1, 1}), focus + "; Notify 25 1,1"},
       {"heading row", click({75, 10}, {1, 1}), focus},
       {"heading column", click({20, 70}, {1, 1}), focus},
       {"below the rows", click({75, 290}, {1, 1}), focus},
       {"beside the columns", click({399, 30}, {1, 1}), focus}});
  EXPECT_EQ(grid_.CellText({1, 1}), L"typed");
}

TEST_F(GridMouseTest, TheCellThatWasSeenIsClickedThoughTheFocusScrolls) {
  PutHome({40, 1});
  When("TakeFocus", [](Grid& grid) { grid.OnFocusGained(); });
  grid_.OnButtonDown({75, 30});
  EXPECT_EQ(slot_.Cursor(), (GridCell{40, 1}));
}

TEST_F(GridMouseTest, ACellThatTheParentTakesAwayMeanwhileIsNotClicked) {
  When("TakeFocus", [](Grid& grid) { grid.SetSize(2, 2); });
  for (const GridPoint point : {GridPoint{75, 120}, {180, 30}}) {
    grid_.SetSize(10, 10);
    grid_.OnButtonDown(point);
    EXPECT_EQ(slot_.Cursor(), (GridCell{1, 1}));
  }
  EXPECT_EQ(Take({"Notify"}), "");
}

}  // namespace
}  // namespace quillgate
