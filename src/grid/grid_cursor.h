// The cell cursor: its frame, its moves and what the parent hears of them. Made for one message;
// works on a slot.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridCursor {
 public:
  GridCursor(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Draws the frame, or removes it when it is there: it is XORed. Nothing when there are no rows or
  // the cursor stands before the first row or column shown.
  void ToggleFrame();
  // Removes the frame, moves, scrolls into view and draws the frame again. The parent is not told.
  void MoveTo(GridCell cell);
  // GCN_ROWCHANGE or GCN_COLCHANGE, and GCN_SELCHANGE.
  void NotifyRow();
  void NotifyCol();

 private:
  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
