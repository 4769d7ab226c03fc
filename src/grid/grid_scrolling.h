// Scroll bars and the part of the grid that is shown. Made for one message; works on a slot.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

enum class GridScroll { kLineBack, kLineOn, kPageBack, kPageOn, kThumb };

class GridScrolling {
 public:
  GridScrolling(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Shows the bars that are needed, with their ranges and positions.
  void UpdateBars();
  // Scrolls until the cursor's cell is shown whole.
  void BringCursorIntoView();
  // The place counts for kThumb only. Takes the focus first.
  void OnVertical(GridScroll request, std::int32_t place);
  void OnHorizontal(GridScroll request, std::int32_t place);

 private:
  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
