#include "grid/grid_mouse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// Columns of 50 pixels beside a heading of 50; the heading row is 21 high.
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
  const std::pair<GridPoint, const char*> cases[] = {
      {{75, 30}, "NotifyMouseMove 1,1"},     {{120, 63}, "NotifyMouseMove 3,2"},
      {{10, 30}, "NotifyMouseMove 1,0"},     {{75, 10}, "NotifyMouseMove 0,1"},
      {{75, 0}, "NotifyMouseMove -1,1"},     {{-5, -5}, "NotifyMouseMove -1,0"},
      {{75, 5'000}, "NotifyMouseMove -1,1"}, {{900, 30}, "NotifyMouseMove 1,-1"},
  };
  for (const auto& [point, call] : cases) {
    grid_.OnMouseMove(point);
    EXPECT_THAT(Take({"Notify"}), ElementsAre(call));
  }
}

TEST_F(GridMouseTest, ThePointerShowsWhereABorderCanBeDragged) {
  struct Case {
    const char* what;
    GridPoint point;
    bool colResize;
    bool isOnBorder;
  };
  const Case cases[] = {
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
  for (const Case& each : cases) {
    slot_.colResize = each.colResize;
    grid_.OnMouseMove(each.point);
    EXPECT_THAT(Take({"SetPointer"}),
                ElementsAre(each.isOnBorder ? "SetPointer column" : "SetPointer arrow"))
        << each.what;
    EXPECT_EQ(slot_.hoverState, each.isOnBorder ? GridHover::kColumnBorder : GridHover::kOrdinary)
        << each.what;
  }
}

TEST_F(GridMouseTest, TheColumnBeforeTheBorderIsDragged) {
  struct Case {
    const char* what;
    std::int32_t homeCol;
    std::int32_t x;
    std::int32_t col;
  };
  const Case cases[] = {
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
  for (const Case& each : cases) {
    slot_.homeCol = each.homeCol;
    DragFrom(each.x);
    EXPECT_TRUE(slot_.resizing) << each.what;
    EXPECT_EQ(slot_.resizeCol, each.col) << each.what;
    EXPECT_EQ(slot_.resizeStartWidth, 50) << each.what;
    grid_.OnButtonUp({each.x, 10});
  }
}

TEST_F(GridMouseTest, ADragWidensItsColumnAndEndsWithTheButton) {
  DragFrom(148);
  EXPECT_FALSE(slot_.spareFlag);
  const std::pair<std::int32_t, std::int32_t> moves[] = {
      {158, 60}, {108, 10}, {90, 0}, {-50, 0}, {170, 72}};
  for (const auto& [x, width] : moves) {
    grid_.OnMouseMove({x, 200});
    EXPECT_EQ(slot_.colWidth[2], width) << x;
  }
  EXPECT_THAT(Take({"SetPointer"}), ElementsAre("SetPointer column"));
  grid_.OnButtonUp({170, 200});
  EXPECT_THAT(system_.Take(),
              ElementsAre("SetPointer arrow", "SendSize 400,300", "SendSize 400,300"));
  EXPECT_TRUE(slot_.spareFlag);
  EXPECT_FALSE(slot_.resizing);
  EXPECT_EQ(slot_.hoverState, GridHover::kOrdinary);
  grid_.OnMouseMove({200, 200});
  EXPECT_EQ(slot_.colWidth[2], 72);
}

TEST_F(GridMouseTest, TheScrollBarFollowsTheDraggedWidth) {
  grid_.SetSize(100, 7);
  EXPECT_FALSE(system_.barsShown[GridBar::kHorizontal]);
  DragFrom(148);
  grid_.OnMouseMove({149, 10});
  EXPECT_TRUE(system_.barsShown[GridBar::kHorizontal]);
  grid_.OnMouseMove({98, 10});
  EXPECT_FALSE(system_.barsShown[GridBar::kHorizontal]);
  EXPECT_EQ(slot_.colWidth[2], 0);
}

TEST_F(GridMouseTest, ADragThatMovesOnlyUpAndDownRepaintsNothing) {
  DragFrom(148);
  system_.Take();
  grid_.OnMouseMove({148, 100});
  EXPECT_THAT(Take({"Invalidate"}), IsEmpty());
}

TEST_F(GridMouseTest, AButtonThatComesUpWithoutADragMeansNothing) {
  grid_.OnButtonUp({10, 10});
  EXPECT_THAT(system_.Take(), IsEmpty());
}

TEST_F(GridMouseTest, AClickMovesTheCursorAndTellsWhatHasChanged) {
  struct Case {
    const char* what;
    GridPoint point;
    GridCell after;
    std::vector<std::string> notifications;
  };
  const Case cases[] = {
      {"row and column",
       {125, 70},
       {3, 2},
       {"Notify 25 3,2", "Notify 6 3,2", "Notify 5 3,2", "Notify 7 3,2", "Notify 5 3,2"}},
      {"row", {75, 70}, {3, 1}, {"Notify 25 3,1", "Notify 6 3,1", "Notify 5 3,1"}},
      {"column", {125, 30}, {1, 2}, {"Notify 25 1,2", "Notify 7 1,2", "Notify 5 1,2"}},
      {"the cursor's cell", {75, 30}, {1, 1}, {"Notify 25 1,1"}},
      {"heading row", {75, 10}, {1, 1}, {}},
      {"heading column", {20, 70}, {1, 1}, {}},
      {"below the rows", {75, 290}, {1, 1}, {}},
      {"beside the columns", {399, 30}, {1, 1}, {}},
  };
  grid_.SetSize(10, 6);
  for (const Case& each : cases) {
    slot_.cursorRow = slot_.cursorCol = 1;
    system_.Take();
    grid_.OnButtonDown(each.point);
    EXPECT_EQ(system_.calls.front(), "TakeFocus") << each.what;
    EXPECT_EQ(slot_.Cursor(), each.after) << each.what;
    EXPECT_THAT(TakeNotifications(), ElementsAreArray(each.notifications)) << each.what;
  }
}

TEST_F(GridMouseTest, AClickCommitsWhatWasTypedIntoTheOldCell) {
  slot_.editing = true;
  slot_.editText = L"typed";
  grid_.OnButtonDown({125, 70});
  EXPECT_EQ(grid_.CellText({1, 1}), L"typed");
  const std::vector<std::string> calls = Take({"TakeFocus", "Notify 10", "Notify 25"});
  EXPECT_THAT(calls, ElementsAre("Notify 10 1,1", "Notify 25 3,2"));
}

TEST_F(GridMouseTest, TheCellThatWasSeenIsClickedThoughTheFocusScrolls) {
  slot_.cursorRow = 1;
  slot_.homeRow = 40;
  system_.onCall = [&](const std::string& call) {
    if (call == "TakeFocus") Grid(slot_, system_).OnFocusGained();
  };
  grid_.OnButtonDown({75, 30});
  EXPECT_EQ(slot_.Cursor(), (GridCell{40, 1}));
}

TEST_F(GridMouseTest, ARowThatTheParentTakesAwayMeanwhileIsNotClicked) {
  system_.onCall = [&](const std::string& call) {
    if (call == "TakeFocus") Grid(slot_, system_).SetSize(2, 10);
  };
  grid_.OnButtonDown({75, 120});
  EXPECT_EQ(slot_.Cursor(), (GridCell{1, 1}));
  EXPECT_THAT(TakeNotifications(), IsEmpty());
}

}  // namespace
}  // namespace quillgate
