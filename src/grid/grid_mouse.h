// Mouse input of a grid: notifies the parent of the cell under the pointer, moves the cursor and
// drags column borders. Constructed per message; works on a slot. Points may be outside of the
// client area.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridMouse {
 public:
  GridMouse(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  void OnMove(GridPoint point);
  void OnButtonDown(GridPoint point);
  void OnButtonUp();

 private:
  bool IsOnBorder(GridPoint point) const;
  void Hover(GridPoint point);
  std::int32_t ColumnToDrag(std::int32_t x) const;
  void StartDrag(std::int32_t x);
  void Drag(std::int32_t x);
  void Click(GridCell cell);

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
