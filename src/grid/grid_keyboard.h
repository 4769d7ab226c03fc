// What keys do in a grid. Made for one message; works on a slot.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridKeyboard {
 public:
  GridKeyboard(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // WM_KEYDOWN with this virtual key (grid_keys.h names those with a meaning of their own).
  void OnKey(int virtualKey);
  // What WM_GETDLGCODE answers for this key, 0 for none. Enter and Escape do their work here: a
  // dialog keeps them to itself.
  std::uint32_t DialogCode(int virtualKey);

 private:
  // True when the key moves the cursor, if it can.
  bool Navigate(int virtualKey);
  void MovePage(std::int32_t direction);
  void MoveRow(std::int32_t step);
  void MoveCol(std::int32_t step);
  void GoToRow(std::int32_t row);
  void OnTyped(int virtualKey);
  void Enter();

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
