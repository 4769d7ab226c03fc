// The cell cursor: its frame, its moves and the parent's notifications. Constructed per message;
// works on a slot.
//
// The frame is XORed onto the cells, so the slot tracks exactly what is on the screen:
// cursorFrameRect is the frame as drawn, empty when there is none. Invalid areas are excepted:
// painting code draws the part of the frame again that it has painted over.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridCursor {
 public:
  GridCursor(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Draws the frame at the cursor and removes it elsewhere. There is no frame without rows, or
  // while the cursor is before the first row or column shown. Does nothing when the frame is up to
  // date.
  void ShowFrame();
  // Does nothing when there is no frame.
  void RemoveFrame();
  // Removes the frame, moves the cursor, scrolls it into view and draws the frame again. Does not
  // notify the parent.
  void MoveTo(GridCell cell);
  // Stores in the slot whether the cursor's cell is protected.
  void NoteProtection();
  // Send GCN_ROWCHANGE or GCN_COLCHANGE, then GCN_SELCHANGE.
  void NotifyRow();
  void NotifyCol();

 private:
  // Empty when no frame is to be drawn.
  GridRect FrameRect() const;
  // Needed when the cursor's row is highlighted: its background differs.
  void InvalidateRow(std::int32_t row);
  void Notify(int code);

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
