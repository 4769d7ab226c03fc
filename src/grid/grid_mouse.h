// What the mouse does in a grid: it tells the parent which cell it is over, places the cursor and
// drags the borders of columns. Made for one message; works on a slot. Points may lie outside of
// the client area.
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
