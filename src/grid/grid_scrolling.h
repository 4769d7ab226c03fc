// Scroll bars and the part of the grid that is shown. Made for one message; works on a slot.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

enum class GridScroll { kLineBack, kLineOn, kPageBack, kPageOn, kThumb };

class GridScrolling {
 public:
  GridScrolling(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Shows the bars that are needed, with their ranges and positions. What can no longer be scrolled
  // to is not what is shown first afterwards.
  void UpdateBars();
  // Scrolls until the cursor's cell is shown whole, or from its beginning when it is too large.
  void BringCursorIntoView();
  // The place counts for kThumb only. Takes the focus first.
  void OnVertical(GridScroll request, std::int32_t place);
  void OnHorizontal(GridScroll request, std::int32_t place);

 private:
  void AssumeBars(bool horizontal, bool vertical);
  std::int32_t LastHomeRow() const;
  std::int32_t HomeRowForCursor() const;
  std::int32_t HomeColForCursor() const;
  void ShowFrom(GridCell home, bool erase);
  void UpdateBarPositions();

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
