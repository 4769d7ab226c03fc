// The layout of a grid, computed from a slot: the rectangles of cells, hit testing and scroll
// ranges. From the top: the title band, the heading row, the data rows from homeRow on; from the
// left: the heading column, the data columns from homeCol on. Uses the slot's clientWidth and
// clientHeight.
#pragma once

#include "grid/grid_slot.h"

namespace quillgate {

// Checks only the upper bounds; negative rows and columns pass.
bool IsValid(GridCell cell);

std::int32_t WidthOf(const GridSlot& slot, std::int32_t col);

// From `first` to `last`; empty when last < first.
struct GridSpan {
  std::int32_t first = 1;
  std::int32_t last = 0;
};
// The rows and columns shown, including those partly visible.
GridSpan VisibleRows(const GridSlot& slot);
GridSpan VisibleCols(const GridSlot& slot);
// The number of whole data rows that fit below the headings.
std::int32_t RowsThatFit(const GridSlot& slot);

// Row 0 is the heading row; column 0 is at the left edge. With extendLastCol, the last column shown
// extends to the right edge.
GridRect CellRect(const GridSlot& slot, GridCell cell);

// Row -1: in the title band or on its lower edge, or below the last row; 0: in the headings. Column
// -1: right of the last column, if that does not extend to the right edge.
std::int32_t RowAt(const GridSlot& slot, std::int32_t y);
std::int32_t ColAt(const GridSlot& slot, std::int32_t x);
GridCell CellAt(const GridSlot& slot, GridPoint point);

// The next column that has a width, from `col` in the direction of `step` (-1 or 1); `col` itself
// when there is none.
std::int32_t NextShownCol(const GridSlot& slot, std::int32_t col, std::int32_t step);

// --- scroll bars; a bar that is not needed is not shown ---
bool NeedsVerticalBar(const GridSlot& slot);
bool NeedsHorizontalBar(const GridSlot& slot);
// The range of both bars starts at 1.
std::int32_t LastVerticalPosition(const GridSlot& slot);
std::int32_t LastHorizontalPosition(const GridSlot& slot);
// Positions of the horizontal bar count the columns that have a width.
std::int32_t PositionOfCol(const GridSlot& slot, std::int32_t col);
// The column at that position; position - 1 when there are fewer columns.
std::int32_t ColAtPosition(const GridSlot& slot, std::int32_t position);

}  // namespace quillgate
