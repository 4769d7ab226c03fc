#include "grid/grid_scrolling.h"

#include <algorithm>
#include <cstdint>

#include "grid/grid_cursor.h"
#include "grid/grid_layout.h"

namespace quillgate {
namespace {

// How far a request scrolls; 0 for kThumb, which is an absolute position.
std::int32_t StepOf(GridScroll request, std::int32_t page) {
  switch (request) {
    case GridScroll::kLineBack:
      return -1;
    case GridScroll::kLineOn:
      return 1;
    case GridScroll::kPageBack:
      return -page;
    case GridScroll::kPageOn:
      return page;
    case GridScroll::kThumb:
      break;
  }
  return 0;
}

}  // namespace

void GridScrolling::UpdateBars() {
  AssumeBars(false, false);
  bool vertical = NeedsVerticalBar(slot_);
  AssumeBars(false, vertical);
  const bool horizontal = NeedsHorizontalBar(slot_);
  if (horizontal && !vertical) {
    AssumeBars(true, false);
    vertical = NeedsVerticalBar(slot_);
  }
  system_.ShowBar(GridBar::kVertical, vertical);
  system_.ShowBar(GridBar::kHorizontal, horizontal);
  const GridSize size = system_.ClientSize();
  slot_.clientWidth = size.width;
  slot_.clientHeight = size.height;
  // Setting the range of a hidden bar would show it.
  if (vertical) system_.SetBarRange(GridBar::kVertical, LastVerticalPosition(slot_));
  if (horizontal) system_.SetBarRange(GridBar::kHorizontal, LastHorizontalPosition(slot_));
  ShowFrom({vertical ? std::min(slot_.homeRow, LastHomeRow()) : 1,
            horizontal ? std::min(slot_.homeCol, slot_.cols) : 1},
           false);
  UpdateBarPositions();
}

void GridScrolling::BringCursorIntoView() {
  ShowFrom({HomeRowForCursor(), HomeColForCursor()}, false);
  UpdateBarPositions();
}

void GridScrolling::OnVertical(GridScroll request, std::int32_t thumbPosition) {
  system_.TakeFocus();
  const std::int32_t page = std::max(RowsThatFit(slot_), 1);
  const std::int32_t last = LastHomeRow();
  const std::int32_t wanted =
      request == GridScroll::kThumb ? thumbPosition : slot_.homeRow + StepOf(request, page);
  const std::int32_t row = std::clamp(wanted, 1, last);
  ShowFrom({row, slot_.homeCol}, row == last);
  UpdateBarPositions();
}

void GridScrolling::OnHorizontal(GridScroll request, std::int32_t thumbPosition) {
  system_.TakeFocus();
  const std::int32_t last = std::max(LastHorizontalPosition(slot_), 1);
  const std::int32_t wanted = request == GridScroll::kThumb
                                  ? thumbPosition
                                  : PositionOfCol(slot_, slot_.homeCol) + StepOf(request, 1);
  const std::int32_t position = std::clamp(wanted, 1, last);
  ShowFrom({slot_.homeRow, std::max(ColAtPosition(slot_, position), 1)}, position == last);
  UpdateBarPositions();
}

void GridScrolling::AssumeBars(bool horizontal, bool vertical) {
  const GridSize size = system_.SizeWithBars(horizontal, vertical);
  slot_.clientWidth = size.width;
  slot_.clientHeight = size.height;
}

// When not even one row fits, the bar's range extends past the last row.
std::int32_t GridScrolling::LastHomeRow() const {
  return std::max(std::min(LastVerticalPosition(slot_), slot_.rows), 1);
}

std::int32_t GridScrolling::HomeRowForCursor() const {
  const std::int32_t row = std::max(std::min(slot_.cursorRow, slot_.rows), 1);
  const std::int32_t fitting = std::max(RowsThatFit(slot_), 1);
  return std::clamp(slot_.homeRow, std::max(row - fitting + 1, 1), row);
}

std::int32_t GridScrolling::HomeColForCursor() const {
  const std::int32_t col = std::max(std::min(slot_.cursorCol, slot_.cols), 1);
  if (col <= slot_.homeCol) return col;
  std::int64_t widthLeft =
      std::int64_t{slot_.clientWidth} - WidthOf(slot_, 0) - WidthOf(slot_, col);
  std::int32_t home = col;
  while (home > slot_.homeCol && WidthOf(slot_, home - 1) <= widthLeft) {
    --home;
    widthLeft -= WidthOf(slot_, home);
  }
  // After scrolling, the first column must have a width.
  while (home > slot_.homeCol && home < col && WidthOf(slot_, home) == 0)
    ++home;
  return home;
}

void GridScrolling::ShowFrom(GridCell home, bool erase) {
  if (home == GridCell{slot_.homeRow, slot_.homeCol}) return;
  // The frame is drawn again after the repaint.
  GridCursor(slot_, system_).RemoveFrame();
  slot_.homeRow = home.row;
  slot_.homeCol = home.col;
  system_.InvalidateAll(erase);
}

void GridScrolling::UpdateBarPositions() {
  system_.SetBarPosition(GridBar::kVertical, slot_.homeRow);
  system_.SetBarPosition(GridBar::kHorizontal, std::max(PositionOfCol(slot_, slot_.homeCol), 1));
}

}  // namespace quillgate
