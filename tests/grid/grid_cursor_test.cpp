#include "grid/grid_cursor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "grid/grid_keys.h"
#include "grid/grid_layout.h"
#include "grid_fixture.h"
#include "screen_grid_system.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Cells of 30 x 10 pixels below headings of the same height, four columns and five rows of them.
class CursorFrameTest : public testing::Test {
 protected:
  CursorFrameTest() {
    slot_.controlId = 7;
    slot_.rows = 8;
    slot_.cols = 6;
    slot_.rowHeight = slot_.headerHeight = 10;
    slot_.colWidth.fill(30);
    // As another control has left it in the slot.
    slot_.cursorFrameRect = {3, 3, 20, 20};
    screen_.characters[kKeyEnter] = kCharEnter;
    screen_.characters['A'] = L'a';
    slot_.cellStore.Store({3, 2}, {false, CellType::kGraphic, L"~1"});
  }

  void MoveTo(std::int32_t row, std::int32_t col) { GridCursor(slot_, screen_).MoveTo({row, col}); }

  GridRect Expected() const {
    const bool isShown =
        slot_.rows > 0 && slot_.cursorRow >= slot_.homeRow && slot_.cursorCol >= slot_.homeCol;
    return isShown ? CellRect(slot_, slot_.Cursor()) : GridRect{};
  }

  // The whole and only frame is where the cursor is, and nothing was left unpainted.
  void ExpectFrame(const std::string& what) {
    screen_.Settle(grid_);
    EXPECT_EQ(screen_.WrongPixels(Expected()), 0) << what;
    EXPECT_EQ(screen_.UnpaintedPixels(), 0) << what;
  }

  ScreenGridSystem screen_{{150, 66}};
  GridSlot slot_;
  Grid grid_{slot_, screen_};
};

TEST_F(CursorFrameTest, ThereIsOneWholeFrameAfterWhateverHappens) {
  constexpr GridRect kPart{35, 5, 50, 15};
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"first painting", [] {}},
      {"a part of the frame lost", [&] { screen_.Lose(kPart); }},
      {"all of it lost", [&] { screen_.InvalidateAll(true); }},
      {"two paintings before what was posted",
       [&] {
         screen_.Lose(kPart);
         screen_.Paint(grid_);
         screen_.Lose({0, 0, 40, 40});
         screen_.Paint(grid_);
       }},
      {"move", [&] { MoveTo(2, 2); }},
      {"move between a painting and what was posted",
       [&] {
         screen_.Lose({0, 0, 150, 66});
         screen_.Paint(grid_);
         MoveTo(3, 2);
       }},
      {"move while a part of the frame waits",
       [&] {
         screen_.Lose({60, 25, 80, 66});
         MoveTo(2, 1);
       }},
      {"a cell stored under the frame", [&] { grid_.SetCell(slot_.Cursor(), L"text"); }},
      {"graphic beside what waits",
       [&] {
         grid_.SetCursorPos(3, 2);
         screen_.Settle(grid_);
         screen_.Lose({0, 0, 62, 66});
       }},
      {"another colour", [&] { grid_.SetCursorColor(0x00FF00); }},
      {"another colour before the first painting",
       [&] {
         screen_.InvalidateAll(false);
         screen_.Paint(grid_);
         grid_.SetCursorColor(0xFFFFFF);
       }},
      {"rows scrolled", [&] { grid_.OnVerticalScroll(GridScroll::kLineOn, 0); }},
      {"the cursor scrolled away", [&] { grid_.OnVerticalScroll(GridScroll::kThumb, 4); }},
      {"columns scrolled", [&] { grid_.OnHorizontalScroll(GridScroll::kLineOn, 0); }},
      {"moved back into view", [&] { grid_.SetCursorPos(1, 1); }},
      {"a column wider", [&] { grid_.SetColWidth(1, 41); }},
      {"a column hidden", [&] { grid_.SetColWidth(1, 0); }},
      {"rows higher", [&] { grid_.SetRowHeight(14); }},
      {"a title", [&] { grid_.SetTitleHeight(9); }},
      {"focus", [&] { grid_.OnFocusGained(); }},
      {"no focus", [&] { grid_.OnFocusLost(); }},
      {"no rows", [&] { grid_.Clear(); }},
      {"rows again", [&] { grid_.SetSize(5, 3); }},
  };
  for (const auto& [what, act] : cases) {
    act();
    ExpectFrame(what);
  }
}

TEST_F(CursorFrameTest, AMoveNeedsNoPaintingWithoutHighlight) {
  slot_.rowHighlight = false;
  ExpectFrame("first painting");
  const int before = screen_.Paintings();
  grid_.OnKey(kKeyDown);
  grid_.OnKey(kKeyRight);
  EXPECT_EQ(screen_.WrongPixels(Expected()), 0);
  ExpectFrame("moved");
  EXPECT_EQ(screen_.Paintings(), before);
}

TEST_F(CursorFrameTest, AParentMayMoveTheCursorWhileAGraphicIsDrawn) {
  ExpectFrame("first painting");
  bool hasMoved = false;
  screen_.onCall = [&](const std::string& call) {
    if (!call.starts_with("NotifyDrawGraphic") || std::exchange(hasMoved, true)) return;
    Grid(slot_, screen_).OnKey(kKeyDown);
  };
  slot_.rowHighlight = false;
  screen_.Lose({60, 0, 100, 66});
  ExpectFrame("moved in a painting");
  EXPECT_TRUE(hasMoved);
  EXPECT_EQ(slot_.cursorRow, 2);
}

TEST_F(CursorFrameTest, NoOrderOfEventsTearsOrDoublesIt) {
  std::mt19937 random(20260725);
  const auto number = [&](int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
  };
  const auto point = [&] { return GridPoint{number(-5, 155), number(-5, 70)}; };
  slot_.editable = true;
  slot_.colResize = true;
  const std::function<void()> events[] = {
      [&] {
        screen_.Lose({number(0, 100), number(0, 40), number(50, 150), number(30, 66)});
      },
      [&] { screen_.Paint(grid_); },
      [&] { screen_.HandlePosted(grid_); },
      [&] { grid_.OnKey(number(kKeyPageUp, kKeyDown)); },
      [&] { grid_.OnKey(number(0, 1) == 0 ? int{'A'} : int{kKeyEnter}); },
      [&] { grid_.OnMouseMove(point()); },
      [&] { grid_.OnButtonDown(point()); },
      [&] { grid_.OnButtonUp(point()); },
      [&] { grid_.OnVerticalScroll(GridScroll::kThumb, number(0, 9)); },
      [&] { grid_.OnHorizontalScroll(static_cast<GridScroll>(number(0, 3)), 0); },
      [&] {
        grid_.SetCell({number(1, 8), number(1, 6)}, L"~2");
      },
      [&] { grid_.SetColWidth(static_cast<unsigned>(number(0, 6)), number(0, 60)); },
      [&] { grid_.SetSize(static_cast<unsigned>(number(0, 12)), number(1, 8)); },
      [&] { grid_.SetCursorPos(number(0, 9), number(0, 7)); },
      [&] { number(0, 1) == 0 ? grid_.OnFocusGained() : grid_.OnFocusLost(); },
      [&] { grid_.SetFlag(&GridSlot::rowHighlight, number(0, 1) == 0); },
  };
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    for (int count = number(1, 12); count > 0; --count)
      events[static_cast<std::size_t>(number(0, static_cast<int>(std::size(events)) - 1))]();
    ExpectFrame("round " + std::to_string(round));
  }
}

class GridCursorTest : public GridFixture {};

TEST_F(GridCursorTest, TheFrameIsDrawnOnlyForACursorThatIsNotBeforeWhatIsShown) {
  struct Case {
    const char* what;
    std::int32_t rows;
    GridCell home;
    GridCell cursor;
    std::vector<std::string> calls;
  };
  const Case cases[] = {
      {"at home", 100, {1, 1}, {1, 1}, {"XorFrame 50,21,100,42 ffffff"}},
      {"after home", 100, {3, 2}, {4, 4}, {"XorFrame 150,42,200,63 ffffff"}},
      {"no rows", 0, {1, 1}, {1, 1}, {}},
      {"row before home", 100, {2, 1}, {1, 1}, {}},
      {"column before home", 100, {1, 2}, {1, 1}, {}},
  };
  for (const Case& each : cases) {
    slot_.rows = each.rows;
    slot_.homeRow = each.home.row;
    slot_.homeCol = each.home.col;
    slot_.cursorRow = each.cursor.row;
    slot_.cursorCol = each.cursor.col;
    slot_.cursorFrameRect = {};
    GridCursor(slot_, system_).ShowFrame();
    EXPECT_EQ(system_.Take(), each.calls) << each.what;
  }
}

TEST_F(GridCursorTest, AMoveErasesTheFrameChangesThePlaceAndDrawsItAgain) {
  slot_.rowHighlight = false;
  grid_.DrawCursor();
  system_.onCall = [&](const std::string& call) {
    if (call != "XorFrame 50,21,100,42 ffffff") return;
    EXPECT_EQ(slot_.Cursor(), (GridCell{1, 1}));
  };
  system_.Take();
  GridCursor(slot_, system_).MoveTo({3, 2});
  EXPECT_THAT(Take({"XorFrame", "Invalidate", "Notify"}),
              ElementsAre("XorFrame 50,21,100,42 ffffff", "XorFrame 100,63,150,84 ffffff"));
  EXPECT_EQ(slot_.cursorFrameRect, (GridRect{100, 63, 150, 84}));
}

TEST_F(GridCursorTest, TheHighlightMovesAlong) {
  GridCursor(slot_, system_).MoveTo({3, 1});
  EXPECT_THAT(Take({"Invalidate"}),
              ElementsAre("Invalidate 50,21,400,43", "Invalidate 50,63,400,85"));
  GridCursor(slot_, system_).MoveTo({3, 2});
  EXPECT_THAT(Take({"Invalidate"}), IsEmpty());
}

TEST_F(GridCursorTest, EachNotificationCarriesTheCursorOfItsTime) {
  slot_.cursorRow = 3;
  slot_.cursorCol = 4;
  system_.onCall = [&](const std::string& call) {
    if (call.starts_with("Notify 6")) slot_.cursorRow = 9;
  };
  grid_.NotifyRow();
  grid_.NotifyCol();
  EXPECT_THAT(TakeNotifications(),
              ElementsAre("Notify 6 3,4", "Notify 5 9,4", "Notify 7 9,4", "Notify 5 9,4"));
}

}  // namespace
}  // namespace quillgate
