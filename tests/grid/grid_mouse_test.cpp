#include "grid/grid_mouse.h"

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

TEST_F(GridMouseTest, EveryMoveIsToldWithTheCellUnderThePointer) {
  const std::pair<GridPoint, const char*> cases[] = {{{120, 63}, "NotifyMouseMove 3,2"},
                                                     {{75, 10}, "NotifyMouseMove 0,1"},
                                                     {{-5, -5}, "NotifyMouseMove -1,0"},
                                                     {{900, 30}, "NotifyMouseMove 1,-1"}};
  for (const auto& [point, call] : cases) {
    grid_.OnMouseMove(point);
    EXPECT_EQ(Take({"Notify"}), call);
  }
}

TEST_F(GridMouseTest, ThePointerShowsWhereABorderCanBeDragged) {
  const struct {
    const char* what;
    GridPoint point;
    bool colResize, isOnBorder;
  } cases[] = {
      {"in the middle of a column", {75, 10}, true, false},
      {"just too far left", {89, 10}, true, false},
      {"left of a border", {90, 10}, true, true},
      {"right of a border", {109, 10}, true, true},
      {"just too far right", {110, 10}, true, false},
      {"at the heading column's border", {45, 10}, true, true},
      {"right of the last column", {555, 10}, true, true},
      {"beside the columns", {570, 10}, true, false},
      {"on a cell", {100, 30}, true, false},
      {"above the headings", {100, 0}, true, false},
      {"not to be dragged", {100, 10}, false, false},
  };
  for (const auto& each : cases) {
    slot_.colResize = each.colResize;
    grid_.OnMouseMove(each.point);
    EXPECT_EQ(Take({"SetPointer"}), each.isOnBorder ? "SetPointer column" : "SetPointer arrow")
        << each.what;
    EXPECT_EQ(slot_.hoverState == GridHover::kColumnBorder, each.isOnBorder) << each.what;
  }
}

TEST_F(GridMouseTest, TheColumnBeforeTheBorderIsDragged) {
  const struct {
    const char* what;
    std::int32_t homeCol, x, col;
  } cases[] = {
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
  for (const auto& each : cases) {
    slot_.homeCol = each.homeCol;
    DragFrom(each.x);
    EXPECT_EQ(slot_.resizeCol, each.col) << each.what;
    grid_.OnButtonUp({each.x, 10});
  }
}

TEST_F(GridMouseTest, ADragWidensItsColumnAndEndsWithTheButton) {
  grid_.OnButtonUp({10, 10});  // of no drag
  EXPECT_EQ(Take(), "");
  DragFrom(148);
  EXPECT_FALSE(slot_.spareFlag);
  Take();
  grid_.OnMouseMove({148, 100});
  EXPECT_EQ(Take(), "NotifyMouseMove 4,2") << "only down";
  const std::pair<std::int32_t, std::int32_t> moves[] = {
      {158, 60}, {108, 10}, {90, 0}, {-50, 0}, {170, 72}};
  for (const auto& [x, width] : moves) {
    grid_.OnMouseMove({x, 200});
    EXPECT_EQ(slot_.colWidth[2], width) << x;
  }
  Take();
  grid_.OnButtonUp({170, 200});
  EXPECT_EQ(Take(), "SetPointer arrow; SendSize 400,300; SendSize 400,300");
  EXPECT_TRUE(slot_.spareFlag);
  EXPECT_EQ(slot_.hoverState, GridHover::kOrdinary);
  grid_.OnMouseMove({200, 200});
  EXPECT_EQ(slot_.colWidth[2], 72);
}

TEST_F(GridMouseTest, TheScrollBarFollowsTheDraggedWidth) {
  grid_.SetSize(100, 7);
  DragFrom(148);
  for (const auto& [x, isNeeded] : {std::pair(148, false), {149, true}, {98, false}}) {
    grid_.OnMouseMove({x, 10});
    EXPECT_EQ(system_.bars[GridBar::kHorizontal].isShown, isNeeded) << x;
  }
}

TEST_F(GridMouseTest, AClickMovesTheCursorAndTellsWhatHasChanged) {
  const struct {
    const char* what;
    GridPoint point;
    GridCell after;
    const char* calls;
  } cases[] = {
      {"row", {75, 70}, {3, 1}, "TakeFocus; Notify 25 3,1; Notify 6 3,1; Notify 5 3,1"},
      {"column", {125, 30}, {1, 2}, "TakeFocus; Notify 25 1,2; Notify 7 1,2; Notify 5 1,2"},
      {"the cursor's cell", {75, 30}, {1, 1}, "TakeFocus; Notify 25 1,1"},
      {"heading row", {75, 10}, {1, 1}, "TakeFocus"},
      {"heading column", {20, 70}, {1, 1}, "TakeFocus"},
      {"below the rows", {75, 290}, {1, 1}, "TakeFocus"},
      {"beside the columns", {399, 30}, {1, 1}, "TakeFocus"},
  };
  grid_.SetSize(10, 6);
  for (const auto& each : cases) {
    PutCursor({1, 1});
    Take();
    grid_.OnButtonDown(each.point);
    EXPECT_EQ(slot_.Cursor(), each.after) << each.what;
    EXPECT_EQ(Take({"TakeFocus", "Notify"}), each.calls) << each.what;
  }
}

TEST_F(GridMouseTest, AClickCommitsWhatWasTypedIntoTheOldCell) {
  slot_.editing = true;
  slot_.editText = L"typed";
  grid_.OnButtonDown({125, 70});
  EXPECT_EQ(grid_.CellText({1, 1}), L"typed");
  EXPECT_EQ(Take({"TakeFocus", "Notify"}),
            "Notify 10 1,1; Notify 25 3,2; Notify 6 3,2; Notify 5 3,2; Notify 7 3,2; Notify 5 3,2");
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
