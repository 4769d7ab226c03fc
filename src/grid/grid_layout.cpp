#include "grid/grid_layout.h"

#include <algorithm>

namespace quillgate {
namespace {

// Beyond any window, with range left to move and enlarge a rectangle: sizes and row counts are set
// by the parent and may have any value.
constexpr std::int64_t kFarOut = 0x3FFFFFFF;

std::int32_t Coordinate(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp(value, -kFarOut, kFarOut));
}

std::int64_t RowHeight(const GridSlot& slot) {
  return std::max(slot.rowHeight, 1);
}

std::int64_t TopOfRows(const GridSlot& slot) {
  return std::int64_t{slot.titleHeight} + slot.headerHeight;
}

std::int64_t HeightForRows(const GridSlot& slot) {
  return slot.clientHeight - TopOfRows(slot);
}

std::int64_t WidthForCols(const GridSlot& slot) {
  return std::int64_t{slot.clientWidth} - slot.colWidth[0];
}

// homeCol, but never the heading column, to which a bar without positions scrolls.
std::int32_t FirstDataCol(const GridSlot& slot) {
  return std::max(slot.homeCol, 1);
}

bool IsShown(const GridSlot& slot, std::int32_t col) {
  return WidthOf(slot, col) > 0;
}

std::int64_t LeftOf(const GridSlot& slot, std::int32_t col) {
  if (col <= 0) return 0;
  std::int64_t left = slot.colWidth[0];
  for (std::int32_t before = FirstDataCol(slot); before < std::min(col, kGridMaxCols + 1); ++before)
    left += WidthOf(slot, before);
  return left;
}

bool ReachesToTheEdge(const GridSlot& slot, std::int32_t col) {
  return slot.extendLastCol && col >= FirstDataCol(slot) && col <= slot.cols &&
         IsShown(slot, col) && NextShownCol(slot, col, 1) == col;
}

}  // namespace

bool IsValid(GridCell cell) {
  return cell.row <= kGridMaxRows && cell.col <= kGridMaxCols;
}

std::int32_t WidthOf(const GridSlot& slot, std::int32_t col) {
  return col >= 0 && col <= kGridMaxCols ? slot.colWidth[static_cast<std::size_t>(col)] : 0;
}

GridSpan VisibleRows(const GridSlot& slot) {
  const std::int64_t height = std::max<std::int64_t>(HeightForRows(slot), 0);
  const std::int64_t count = (height + RowHeight(slot) - 1) / RowHeight(slot);
  const std::int64_t last = std::min<std::int64_t>(slot.homeRow + count - 1, slot.rows);
  if (last < slot.homeRow) return {};
  return {slot.homeRow, static_cast<std::int32_t>(last)};
}

GridSpan VisibleCols(const GridSlot& slot) {
  const std::int32_t first = FirstDataCol(slot);
  std::int32_t end = first;
  for (std::int64_t width = WidthForCols(slot); width > 0 && end <= slot.cols; ++end)
    width -= WidthOf(slot, end);
  if (end == first) return {};
  return {first, end - 1};
}

std::int32_t RowsThatFit(const GridSlot& slot) {
  return Coordinate(std::max<std::int64_t>(HeightForRows(slot), 0) / RowHeight(slot));
}

GridRect CellRect(const GridSlot& slot, GridCell cell) {
  std::int64_t top = slot.titleHeight;
  std::int64_t height = slot.headerHeight;
  if (cell.row != 0) {
    height = RowHeight(slot);
    top = TopOfRows(slot) + (std::int64_t{cell.row} - slot.homeRow) * height;
  }
  const std::int64_t left = LeftOf(slot, cell.col);
  std::int64_t right = left + WidthOf(slot, cell.col);
  if (ReachesToTheEdge(slot, cell.col)) right = std::max<std::int64_t>(right, slot.clientWidth);
  return {Coordinate(left), Coordinate(top), Coordinate(right), Coordinate(top + height)};
}

std::int32_t RowAt(const GridSlot& slot, std::int32_t y) {
  if (y <= slot.titleHeight) return -1;
  const std::int64_t below = y - TopOfRows(slot);
  if (below < 0) return 0;
  const std::int64_t row = slot.homeRow + below / RowHeight(slot);
  return row > slot.rows ? -1 : static_cast<std::int32_t>(row);
}

std::int32_t ColAt(const GridSlot& slot, std::int32_t x) {
  std::int64_t beyond = std::int64_t{x} - slot.colWidth[0];
  if (beyond < 0) return 0;
  std::int32_t lastShown = -1;
  for (std::int32_t col = FirstDataCol(slot); col <= slot.cols; ++col) {
    if (beyond < WidthOf(slot, col)) return col;
    beyond -= WidthOf(slot, col);
    if (IsShown(slot, col)) lastShown = col;
  }
  return slot.extendLastCol ? lastShown : -1;
}

GridCell CellAt(const GridSlot& slot, GridPoint point) {
  return {RowAt(slot, point.y), ColAt(slot, point.x)};
}

std::int32_t NextShownCol(const GridSlot& slot, std::int32_t col, std::int32_t step) {
  std::int32_t next = step > 0 ? std::max(col + 1, 1) : std::min(col - 1, slot.cols);
  while (next >= 1 && next <= slot.cols && !IsShown(slot, next))
    next += step;
  return next >= 1 && next <= slot.cols ? next : col;
}

bool NeedsVerticalBar(const GridSlot& slot) {
  return slot.rows * RowHeight(slot) > HeightForRows(slot);
}

bool NeedsHorizontalBar(const GridSlot& slot) {
  std::int64_t width = 0;
  for (std::int32_t col = 1; col <= slot.cols; ++col)
    width += WidthOf(slot, col);
  return width > WidthForCols(slot);
}

std::int32_t LastVerticalPosition(const GridSlot& slot) {
  return std::max(slot.rows - RowsThatFit(slot) + 1, 1);
}

std::int32_t LastHorizontalPosition(const GridSlot& slot) {
  return std::max(PositionOfCol(slot, slot.cols), 1);
}

std::int32_t PositionOfCol(const GridSlot& slot, std::int32_t col) {
  std::int32_t shown = 0;
  for (std::int32_t before = 1; before <= std::min(col, slot.cols); ++before)
    shown += IsShown(slot, before) ? 1 : 0;
  return shown;
}

std::int32_t ColAtPosition(const GridSlot& slot, std::int32_t position) {
  std::int32_t shown = 0;
  for (std::int32_t col = 1; col <= slot.cols; ++col) {
    shown += IsShown(slot, col) ? 1 : 0;
    if (IsShown(slot, col) && shown == position) return col;
  }
  return position - 1;
}

}  // namespace quillgate
