// The cell cursor: its frame, its moves and what the parent hears of them. Made for one message;
// works on a slot.
//
// The frame is XORed onto the cells, so what stands on the screen is kept exactly: the slot's
// cursorFrameRect is the frame that is there (an empty one: none), outside of what is waiting to be
// painted. Whoever paints puts back what the painting covered of it.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridCursor {
 public:
  GridCursor(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Afterwards the frame is where the cursor is, or nowhere when there are no rows or it
  // stands before the first row or column shown. Nothing when it is there already.
  void ShowFrame();
  // Nothing when there is no frame.
  void RemoveFrame();
  // Removes the frame, moves, scrolls into view and draws the frame again. The parent is not told.
  void MoveTo(GridCell cell);
  // Notes in the slot whether the cursor's cell is protected.
  void NoteProtection();
  // GCN_ROWCHANGE or GCN_COLCHANGE, and GCN_SELCHANGE.
  void NotifyRow();
  void NotifyCol();

 private:
  // Empty when no frame is to be drawn.
  GridRect FrameRect() const;
  // The background of the cursor's row is its own.
  void InvalidateRow(std::int32_t row);
  void Notify(int code);

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
