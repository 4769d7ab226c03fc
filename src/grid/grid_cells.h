// The cells of a grid control and their sizes: changes to the slot, and the updates of the window
// that follow from them. Constructed per message; works on a slot.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridCells {
 public:
  // Stores the client area's size in the slot.
  GridCells(GridSlot& slot, GridSystem& system);

  // --- cells; false or nullopt: the cell is past the limits, and the parent was notified ---
  bool SetProtect(GridCell cell, bool isProtected);
  bool SetCell(GridCell cell, std::wstring_view text);
  // Empty when nothing is stored.
  std::optional<std::wstring> CellText(GridCell cell);
  bool DeleteCell(GridCell cell);
  // 1 to 5 in the order of CellType; 0 when nothing is stored.
  std::optional<int> TypeNumber(GridCell cell);
  std::optional<bool> IsProtected(GridCell cell);
  void SetDefaultProtect(bool isProtected);
  void Clear();

  // --- sizes: parameters as in the messages of the same name ---
  void SetSize(std::uint32_t rows, std::int32_t cols);
  void SetColWidth(std::uint32_t col, std::int32_t width);
  void SetHeaderHeight(std::int32_t height);
  void SetRowHeight(std::int32_t height);
  // Sends WM_SIZE twice, with the last size that the control received, and does not compute the
  // layout anew.
  void RefreshLayout();

 protected:
  GridSlot& slot_;
  GridSystem& system_;

 private:
  // Returns false for a cell past the limits and notifies the parent.
  bool Check(GridCell cell);
  // Sets the number of rows to the last stored cell's row when that is larger.
  void IncludeLastRow();
  // Enlarges the row height and the column width so that the text fits.
  void EnlargeFor(GridCell cell, std::wstring_view text);
};

}  // namespace quillgate
