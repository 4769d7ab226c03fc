#include "grid/grid_cursor.h"

#include "grid_fixture.h"

namespace quillgate {
namespace {

class GridCursorTest : public GridFixture {};

TEST_F(GridCursorTest, TheFrameIsDrawnOnlyForACursorThatIsNotBeforeWhatIsShown) {
  const struct {
    const char* what;
    std::int32_t rows;
    GridCell home, cursor;
    const char* calls;
  } cases[] = {
      {"at home", 100, {1, 1}, {1, 1}, "XorFrame 50,21,100,42 ffffff"},
      {"after home", 100, {3, 2}, {4, 4}, "XorFrame 150,42,200,63 ffffff"},
      {"no rows", 0, {1, 1}, {1, 1}, ""},
      {"row before home", 100, {2, 1}, {1, 1}, ""},
      {"column before home", 100, {1, 2}, {1, 1}, ""},
  };
  for (const auto& each : cases) {
    slot_.rows = each.rows;
    PutHome(each.home);
    PutCursor(each.cursor);
    slot_.cursorFrameRect = {};
    grid_.DrawCursor();
    EXPECT_EQ(Take(), each.calls) << each.what;
  }
}

TEST_F(GridCursorTest, AMoveErasesTheFrameChangesThePlaceAndDrawsItAgain) {
  slot_.rowHighlight = false;
  grid_.DrawCursor();
  Take();
  When("XorFrame 50,21", [&](Grid&) { EXPECT_EQ(slot_.Cursor(), (GridCell{1, 1})); });
  GridCursor(slot_, system_).MoveTo({3, 2});
  EXPECT_EQ(Take({"XorFrame", "Invalidate", "Notify"}),
            "XorFrame 50,21,100,42 ffffff; XorFrame 100,63,150,84 ffffff");
}

TEST_F(GridCursorTest, TheHighlightMovesAlong) {
  GridCursor(slot_, system_).MoveTo({3, 1});
  EXPECT_EQ(Take({"Invalidate"}), "Invalidate 50,21,400,43; Invalidate 50,63,400,85");
  GridCursor(slot_, system_).MoveTo({3, 2});
  EXPECT_EQ(Take({"Invalidate"}), "");
}

TEST_F(GridCursorTest, EachNotificationCarriesTheCursorOfItsTime) {
  PutCursor({3, 4});
  When("Notify 6", [&](Grid&) { slot_.cursorRow = 9; });
  grid_.NotifyRow();
  grid_.NotifyCol();
  EXPECT_EQ(Take(), "Notify 6 3,4; Notify 5 9,4; Notify 7 9,4; Notify 5 9,4");
}

}  // namespace
}  // namespace quillgate
