#include "grid/grid_cursor.h"

#include <utility>

#include "grid/grid_layout.h"
#include "grid/grid_notifications.h"
#include "grid/grid_scrolling.h"

namespace quillgate {

void GridCursor::ShowFrame() {
  const GridRect wanted = FrameRect();
  if (slot_.cursorFrameRect == wanted) return;
  RemoveFrame();
  if (IsEmpty(wanted)) return;
  slot_.cursorFrameRect = wanted;
  system_.XorFrame(wanted, slot_.cursorColor);
}

void GridCursor::RemoveFrame() {
  const GridRect frame = std::exchange(slot_.cursorFrameRect, {});
  if (!IsEmpty(frame)) system_.XorFrame(frame, slot_.cursorColor);
}

void GridCursor::MoveTo(GridCell cell) {
  RemoveFrame();
  const std::int32_t rowBefore = std::exchange(slot_.cursorRow, cell.row);
  slot_.cursorCol = cell.col;
  if (slot_.rowHighlight && rowBefore != cell.row) {
    InvalidateRow(rowBefore);
    InvalidateRow(cell.row);
  }
  GridScrolling(slot_, system_).BringCursorIntoView();
  ShowFrame();
}

void GridCursor::NoteProtection() {
  const CellRecord* record = std::as_const(slot_.cellStore).Find(slot_.Cursor());
  slot_.currentProtected = record != nullptr && record->isProtected;
}

void GridCursor::NotifyRow() {
  Notify(GCN_ROWCHANGE);
  Notify(GCN_SELCHANGE);
}

void GridCursor::NotifyCol() {
  Notify(GCN_COLCHANGE);
  Notify(GCN_SELCHANGE);
}

GridRect GridCursor::FrameRect() const {
  const bool isShown =
      slot_.rows > 0 && slot_.cursorRow >= slot_.homeRow && slot_.cursorCol >= slot_.homeCol;
  const GridRect cell = isShown ? CellRect(slot_, slot_.Cursor()) : GridRect{};
  return IsEmpty(cell) ? GridRect{} : cell;
}

void GridCursor::InvalidateRow(std::int32_t row) {
  if (row < slot_.homeRow) return;
  const GridRect heading = CellRect(slot_, {row, 0});
  // The line below the row is the top line of the next row.
  system_.Invalidate({heading.right, heading.top, slot_.clientWidth, heading.bottom + 1}, false);
}

void GridCursor::Notify(int code) {
  // The cursor is read each time: the parent may have moved it during the previous notification.
  system_.Notify(code, PackedCell(slot_.Cursor()));
}

}  // namespace quillgate
