// Keyboard input of a grid. Constructed per message; works on a slot.
#pragma once

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridKeyboard {
 public:
  GridKeyboard(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // WM_KEYDOWN with this virtual key (grid_keys.h lists those with a special function).
  void OnKey(int virtualKey);
  // Returns the WM_GETDLGCODE reply for the key; 0 means no key. Enter and Escape are handled here:
  // a dialog does not pass them on.
  std::uint32_t DialogCode(int virtualKey);

 private:
  // True for a navigation key, also when the cursor cannot move.
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
