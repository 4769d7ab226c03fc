#include "grid/grid_mouse.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "grid/grid_cells.h"
#include "grid/grid_cursor.h"
#include "grid/grid_editing.h"
#include "grid/grid_layout.h"
#include "grid/grid_notifications.h"

namespace quillgate {
namespace {

// Distance in pixels, to either side, at which a border can be dragged.
constexpr std::int32_t kBorderReach = 10;

}  // namespace

void GridMouse::OnMove(GridPoint point) {
  system_.NotifyMouseMove(CellAt(slot_, point));
  if (slot_.resizing) {
    Drag(point.x);
  } else {
    Hover(point);
  }
}

void GridMouse::OnButtonDown(GridPoint point) {
  // The cell as the user sees it under the pointer: taking the focus may scroll.
  const GridCell cell = CellAt(slot_, point);
  if (slot_.hoverState == GridHover::kColumnBorder) StartDrag(point.x);
  if (slot_.editing) {
    GridEditing(slot_, system_).Commit();
  } else {
    system_.TakeFocus();
  }
  // Either call may have notified the parent, which may have removed rows.
  const bool exists = cell.row <= slot_.rows && cell.col <= slot_.cols;
  if (cell.row >= 1 && cell.col >= 1 && exists) Click(cell);
}

void GridMouse::OnButtonUp() {
  if (!slot_.resizing) return;
  slot_.resizing = false;
  slot_.hoverState = GridHover::kOrdinary;
  slot_.spareFlag = slot_.savedSpareFlag;
  system_.SetPointer(GridPointer::kArrow);
  GridCells(slot_, system_).RefreshLayout();
}

bool GridMouse::IsOnBorder(GridPoint point) const {
  if (!slot_.colResize || RowAt(slot_, point.y) != 0) return false;
  const std::int32_t col = ColAt(slot_, point.x);
  return ColAt(slot_, point.x - kBorderReach) != col || ColAt(slot_, point.x + kBorderReach) != col;
}

void GridMouse::Hover(GridPoint point) {
  const bool isOnBorder = IsOnBorder(point);
  slot_.hoverState = isOnBorder ? GridHover::kColumnBorder : GridHover::kOrdinary;
  system_.SetPointer(isOnBorder ? GridPointer::kSizeColumn : GridPointer::kArrow);
}

// The column left of the border.
std::int32_t GridMouse::ColumnToDrag(std::int32_t x) const {
  const std::int32_t col = ColAt(slot_, x);
  if (col < 0) return slot_.cols;
  if (col != ColAt(slot_, x + kBorderReach)) return col;
  // A column scrolled out of view is not left of the border; the heading column is.
  return col <= slot_.homeCol ? 0 : col - 1;
}

void GridMouse::StartDrag(std::int32_t x) {
  slot_.savedSpareFlag = slot_.spareFlag;
  slot_.spareFlag = false;
  slot_.resizing = true;
  slot_.resizeCol = ColumnToDrag(x);
  slot_.resizeStartWidth = WidthOf(slot_, slot_.resizeCol);
  slot_.resizeStartX = x;
}

void GridMouse::Drag(std::int32_t x) {
  // 64 bits: the parent may have set any width.
  const std::int64_t wanted = std::int64_t{slot_.resizeStartWidth} + x - slot_.resizeStartX;
  const auto width = static_cast<std::int32_t>(
      std::clamp<std::int64_t>(wanted, 0, std::numeric_limits<std::int32_t>::max()));
  if (width == WidthOf(slot_, slot_.resizeCol)) return;
  // The cursor's cell moves with the border; the frame is drawn again after the repaint.
  GridCursor(slot_, system_).RemoveFrame();
  GridCells(slot_, system_).SetColWidth(static_cast<std::uint32_t>(slot_.resizeCol), width);
}

void GridMouse::Click(GridCell cell) {
  const GridCell before = slot_.Cursor();
  GridCursor cursor(slot_, system_);
  cursor.MoveTo(cell);
  system_.Notify(GCN_CLICK, PackedCell(slot_.Cursor()));
  if (cell.row != before.row) cursor.NotifyRow();
  if (cell.col != before.col) cursor.NotifyCol();
}

}  // namespace quillgate
