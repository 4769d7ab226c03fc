// One grid control, without its window: what each message of the window does. Made for one message
// at a time, since all state is in the slot. Owned by the window procedure, on the window's thread.
// Whatever a call notifies the parent of may end the control; the slot is then reset, but still
// there.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid/grid_scrolling.h"
#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

class Grid {
 public:
  // Notes the client area's size in the slot.
  Grid(GridSlot& slot, GridSystem& system);

  // --- the window's life ---
  // Longer than kGridMaxText: replaced by a message that says so. Decides the title band's height.
  void SetTitle(std::wstring_view title);
  // The font of the cells, and of headings and title as long as these have none.
  void SetFont(GridFont font);
  // WM_SIZE with the new client size.
  void OnSize(GridSize size);
  void OnFocusGained();
  void OnFocusLost();
  void OnEnabled(bool enabled);

  // --- painting and input ---
  void Paint();
  // GCM_DRAWCURSOR.
  void DrawCursor();
  void OnKey(int virtualKey);
  // WM_GETDLGCODE for that key, 0 for none.
  std::uint32_t DialogCode(int virtualKey);
  void OnMouseMove(GridPoint point);
  void OnButtonDown(GridPoint point);
  void OnButtonUp(GridPoint point);
  void OnVerticalScroll(GridScroll request, std::int32_t place);
  void OnHorizontalScroll(GridScroll request, std::int32_t place);

  // --- cells; false or nothing: the cell is past the limits, and the parent has been told ---
  bool SetProtect(GridCell cell, bool isProtected);
  bool SetCell(GridCell cell, std::wstring_view text);
  // Empty when nothing is stored.
  std::optional<std::wstring> CellText(GridCell cell);
  bool DeleteCell(GridCell cell);
  // 1 to 5 in the order of CellType; 0 when nothing is stored.
  std::optional<int> TypeNumber(GridCell cell);
  std::optional<bool> IsProtected(GridCell cell);

  // --- size, place and looks: values as the messages of the same name carry them ---
  void SetDefaultProtect(bool isProtected);
  void Clear();
  void SetSize(std::uint32_t rows, std::int32_t cols);
  void SetCursorPos(std::int32_t row, std::int32_t col);
  void SetColWidth(std::uint32_t col, std::int32_t width);
  void SetHeaderHeight(std::int32_t height);
  void SetRowHeight(std::int32_t height);
  void SetTitleHeight(std::int32_t height);
  void SetCursorColor(GridColour colour);
  void SetGridLineColor(GridColour colour);
  void SetSpareFlag(bool flag);
  // Those that only repaint.
  void SetColour(GridColour GridSlot::*colour, GridColour value);
  void SetFlag(bool GridSlot::*flag, bool value);
  void SetFontOf(GridFont GridSlot::*font, GridFont value);
  void NotifyRow();
  void NotifyCol();
  void Refresh();

 private:
  // False for a cell past the limits, of which the parent is told.
  bool Check(GridCell cell);
  // As many rows as the last cell that is stored needs.
  void IncludeLastRow();
  // Makes the row high and the column wide enough for the text.
  void MakeRoom(GridCell cell, std::wstring_view text);
  // Changes a colour while the cursor's frame is off.
  void SetUnderFrame(GridColour GridSlot::*colour, GridColour value);

  GridSlot& slot_;
  GridSystem& system_;
};

// Sends the size that the control last heard of again, twice: the parent's notion of its size is
// served, nothing is laid out.
void RefreshLayout(const GridSlot& slot, GridSystem& system);

}  // namespace quillgate
