// The cells of a grid control and the room they take: what is stored in the slot, and what of the
// window follows from that. Made for one message; works on a slot.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class GridCells {
 public:
  // Notes the client area's size in the slot.
  GridCells(GridSlot& slot, GridSystem& system);

  // --- cells; false or nothing: the cell is past the limits, and the parent has been told ---
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

  // --- sizes, as the messages of the same name carry them ---
  void SetSize(std::uint32_t rows, std::int32_t cols);
  void SetColWidth(std::uint32_t col, std::int32_t width);
  void SetHeaderHeight(std::int32_t height);
  void SetRowHeight(std::int32_t height);
  // Sends the size that the control last heard of again, twice: the parent's notion of its size is
  // served, nothing is laid out.
  void RefreshLayout();

 protected:
  GridSlot& slot_;
  GridSystem& system_;

 private:
  // False for a cell past the limits, of which the parent is told.
  bool Check(GridCell cell);
  // As many rows as the last cell that is stored needs.
  void IncludeLastRow();
  // Makes the row high and the column wide enough for the text.
  void MakeRoom(GridCell cell, std::wstring_view text);
};

}  // namespace quillgate
