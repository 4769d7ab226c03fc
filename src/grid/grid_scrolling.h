// Scroll bars and the part of the grid that is shown. Constructed per message; works on a slot.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

enum class GridScroll { kLineBack, kLineOn, kPageBack, kPageOn, kThumb };

class GridScrolling {
 public:
  GridScrolling(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Shows the bars that are needed and sets their ranges and positions. When the first row or
  // column shown is beyond the new range, scrolls back to the range.
  void UpdateBars();
  // Scrolls until the cursor's cell is fully visible, or at least its beginning when it is too
  // large.
  void BringCursorIntoView();
  // `thumbPosition` is used for kThumb only. Both take the focus first.
  void OnVertical(GridScroll request, std::int32_t thumbPosition);
  void OnHorizontal(GridScroll request, std::int32_t thumbPosition);

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
