// Where the cells of a grid stand, which one is under a point, and how far it scrolls: arithmetic
// on a slot. From the top: the title band, the heading row, the data rows from homeRow on; from the
// left: the heading column, the data columns from homeCol on. Uses the slot's clientWidth and
// clientHeight.
#pragma once

#include "grid/grid_slot.h"

namespace quillgate {

// Only the upper bounds are tested; rows and columns below 0 pass.
bool IsValid(GridCell cell);

std::int32_t WidthOf(const GridSlot& slot, std::int32_t col);

// From the first to the last; empty when last < first.
struct GridSpan {
  std::int32_t first = 1;
  std::int32_t last = 0;
};
// Those shown, if only in part.
GridSpan VisibleRows(const GridSlot& slot);
GridSpan VisibleCols(const GridSlot& slot);
// Whole data rows that fit below the headings.
std::int32_t RowsThatFit(const GridSlot& slot);

// Row 0 is the heading row; column 0 stands at the left edge. The last column shown reaches to the
// right edge if extendLastCol is on.
GridRect CellRect(const GridSlot& slot, GridCell cell);

// Row -1: on the title band and its lower edge, or below the last row; 0: on the headings.
// Column -1: right of the last column, if that does not reach to the edge.
std::int32_t RowAt(const GridSlot& slot, std::int32_t y);
std::int32_t ColAt(const GridSlot& slot, std::int32_t x);
GridCell CellAt(const GridSlot& slot, GridPoint point);

// The next column that has a width, from `col` in the direction of step (-1 or 1); `col` itself
// when there is none.
std::int32_t NextShownCol(const GridSlot& slot, std::int32_t col, std::int32_t step);

// --- scroll bars; a bar that is not needed is not shown ---
bool NeedsVerticalBar(const GridSlot& slot);
bool NeedsHorizontalBar(const GridSlot& slot);
// Both bars begin at 1.
std::int32_t LastVerticalPosition(const GridSlot& slot);
std::int32_t LastHorizontalPosition(const GridSlot& slot);
// Positions of the horizontal bar count the columns that have a width.
std::int32_t PositionOfCol(const GridSlot& slot, std::int32_t col);
// The column of that position; position - 1 when there are not that many.
std::int32_t ColAtPosition(const GridSlot& slot, std::int32_t position);

}  // namespace quillgate
