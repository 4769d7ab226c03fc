// The cursor's frame is XORed onto the cells. Here the window system has a screen: it keeps, for
// each pixel of the client area, whether a frame is XORed onto it and whether it waits to be
// painted, and sees that a painting leaves none out.
#include "grid/grid_cursor.h"

#include <random>

#include "grid/grid_keys.h"
#include "grid/grid_layout.h"
#include "grid_fixture.h"

namespace quillgate {
namespace {

constexpr GridSize kScreen{150, 66};

// A pen of three pixels on the outermost pixels of the rectangle.
bool IsInFrame(const GridRect& frame, std::int32_t x, std::int32_t y) {
  const auto isWithin = [&](std::int32_t edge) {
    return x >= frame.left + edge && x < frame.right - edge && y >= frame.top + edge &&
           y < frame.bottom - edge;
  };
  return !IsEmpty(frame) && isWithin(-1) && !isWithin(2);
}

// Drawing within a painting is clipped to what waits; what a parent draws into a graphic cell is
// not.
class ScreenGridSystem : public RecordingGridSystem {
 public:
  ScreenGridSystem() { clientSize = kScreen; }

  // As when another window has been over it: what was there is lost.
  void Lose(const GridRect& area) {
    ForEach(area, [](Pixel& pixel, std::int32_t x, std::int32_t y) {
      pixel.waits = true;
      pixel.isFramed = (x + y) % 2 == 0;
    });
  }
  // WM_PAINT, if anything waits.
  void Paint(Grid& grid) {
    if (!Waits()) return;
    for (Pixel& pixel : pixels_)
      pixel = {.isFramed = pixel.isFramed, .waits = false, .isClip = pixel.waits};
    isPainting_ = true;
    grid.Paint();
    isPainting_ = false;
    // It has not drawn on them, and no other painting will.
    const auto isLeftOut = [](const Pixel& pixel) {
      return pixel.isClip && !pixel.isPainted && !pixel.waits;
    };
    EXPECT_EQ(std::ranges::count_if(pixels_, isLeftOut), 0);
  }
  // One posted GCM_DRAWCURSOR, if there is one.
  void HandlePosted(Grid& grid) {
    if (posted_ == 0) return;
    --posted_;
    grid.DrawCursor();
  }
  // Until nothing is posted and nothing waits.
  void Settle(Grid& grid) {
    while (posted_ > 0 || Waits())
      posted_ > 0 ? HandlePosted(grid) : Paint(grid);
  }

  // Pixels that do not show what they should when the only frame is this one; an empty one: none.
  int WrongPixels(const GridRect& frame) {
    int wrong = 0;
    ForEach(kAll, [&](const Pixel& pixel, std::int32_t x, std::int32_t y) {
      wrong += pixel.isFramed != IsInFrame(frame, x, y) ? 1 : 0;
    });
    return wrong;
  }

  void Invalidate(const GridRect& area, bool) override {
    ForEach(area, [](Pixel& pixel, std::int32_t, std::int32_t) { pixel.waits = true; });
  }
  void InvalidateAll(bool erase) override { Invalidate(kAll, erase); }
  void PostDrawCursor() override { ++posted_; }
  void NotifyDrawGraphic(const GridRect& inner) override {
    Cover(inner, false);
    RecordingGridSystem::NotifyDrawGraphic(inner);
  }
  void DrawEdge(const GridRect& area) override { Cover(area, isPainting_); }
  void DrawBox(const GridRect& area, GridColour, GridColour) override { Cover(area, isPainting_); }
  void FillUnused(const GridRect& area) override { Cover(area, isPainting_); }
  void XorFrame(const GridRect& frame, GridColour) override {
    const GridRect outer{frame.left - 1, frame.top - 1, frame.right + 1, frame.bottom + 1};
    ForEach(outer, [&](Pixel& pixel, std::int32_t x, std::int32_t y) {
      if (IsInFrame(frame, x, y) && (!isPainting_ || pixel.isClip))
        pixel.isFramed = !pixel.isFramed;
    });
  }

 private:
  struct Pixel {
    bool isFramed = false;
    bool waits = true;
    bool isClip = false;  // of the painting under way
    bool isPainted = false;
  };
  static constexpr GridRect kAll{0, 0, kScreen.width, kScreen.height};

  template <typename Action>
  void ForEach(const GridRect& area, Action action) {
    for (std::int32_t y = std::max(area.top, 0); y < std::min(area.bottom, kAll.bottom); ++y) {
      for (std::int32_t x = std::max(area.left, 0); x < std::min(area.right, kAll.right); ++x)
        action(pixels_[static_cast<std::size_t>(y * kScreen.width + x)], x, y);
    }
  }
  bool Waits() const { return std::ranges::any_of(pixels_, &Pixel::waits); }
  void Cover(const GridRect& area, bool clipped) {
    ForEach(area, [&](Pixel& pixel, std::int32_t, std::int32_t) {
      if (clipped && !pixel.isClip) return;
      pixel.isFramed = false;
      pixel.isPainted = true;
    });
  }

  std::vector<Pixel> pixels_ = std::vector<Pixel>(kScreen.width * kScreen.height);
  bool isPainting_ = false;
  int posted_ = 0;
};

// Cells of 30 x 10 pixels below headings of the same height, four columns and five rows of them. At
// times the parent moves the cursor while it draws a graphic.
TEST(CursorFrame, NoOrderOfEventsTearsOrDoublesIt) {
  ScreenGridSystem screen;
  GridSlot slot;
  Grid grid(slot, screen);
  slot.rows = 8;
  slot.cols = 6;
  slot.rowHeight = slot.headerHeight = 10;
  slot.colWidth.fill(30);
  slot.editable = slot.colResize = true;
  slot.cursorFrameRect = {3, 3, 20, 20};  // as another control has left it in the slot
  slot.cellStore.Store({3, 2}, {false, CellType::kGraphic, L"~1"});

  std::mt19937 random(20260725);
  const auto number = [&](int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
  };
  const auto isHeads = [&] { return number(0, 1) == 0; };
  const auto point = [&] { return GridPoint{number(-5, 155), number(-5, 70)}; };
  const auto area = [&] {
    return GridRect{number(0, 100), number(0, 40), number(50, 150), number(30, 66)};
  };
  const auto cell = [&] { return GridCell{number(1, 8), number(1, 6)}; };
  const auto scroll = [&] { return static_cast<GridScroll>(number(0, 3)); };
  bool parentMoves = false;
  screen.onCall = [&](const std::string& call) {
    if (call.starts_with("NotifyDrawGraphic") && std::exchange(parentMoves, false))
      Grid(slot, screen).OnKey(number(kKeyPageUp, kKeyDown));
  };
  const std::function<void()> events[] = {
      [&] { screen.Lose(area()); },
      [&] { screen.Paint(grid); },
      [&] { screen.HandlePosted(grid); },
      [&] { grid.OnKey(number(kKeyPageUp, kKeyDown)); },
      [&] { grid.OnKey(kKeyEnter); },
      // What is posted comes before keys, so the frame is where it belongs when an edit begins.
      [&] { screen.Settle(grid), grid.OnKey(kFirstCharKey + 'a'); },
      [&] { grid.OnMouseMove(point()); },
      [&] { grid.OnButtonDown(point()); },
      [&] { grid.OnButtonUp(point()); },
      [&] { grid.OnVerticalScroll(GridScroll::kThumb, number(0, 9)); },
      [&] { grid.OnHorizontalScroll(scroll(), 0); },
      [&] { grid.SetCell(cell(), isHeads() ? L"~2" : L"text"); },
      [&] { grid.SetColWidth(static_cast<unsigned>(number(0, 6)), number(0, 60)); },
      [&] { grid.SetRowHeight(number(8, 14)); },
      [&] { grid.SetTitleHeight(number(0, 9)); },
      [&] { grid.SetSize(static_cast<unsigned>(number(0, 12)), number(1, 8)); },
      [&] { grid.SetCursorPos(number(0, 9), number(0, 7)); },
      [&] { grid.SetCursorColor(0x00FF00); },
      [&] { isHeads() ? grid.OnFocusGained() : grid.OnFocusLost(); },
      [&] { grid.SetFlag(&GridSlot::rowHighlight, isHeads()); },
  };
  for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    parentMoves = isHeads();
    for (int count = number(1, 12); count > 0; --count)
      events[static_cast<std::size_t>(number(0, static_cast<int>(std::size(events)) - 1))]();
    screen.Settle(grid);
    const bool isShown =
        slot.rows > 0 && slot.cursorRow >= slot.homeRow && slot.cursorCol >= slot.homeCol;
    const GridRect frame = isShown ? CellRect(slot, slot.Cursor()) : GridRect{};
    EXPECT_EQ(screen.WrongPixels(frame), 0);
  }
}

class GridCursorTest : public GridFixture {};

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
