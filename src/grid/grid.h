// One grid control, without its window: what each message of the window does. Made for one message
// at a time, since all state is in the slot. Owned by the window procedure, on the window's thread.
// Whatever a call notifies the parent of may end the control; the slot is then reset, but still
// there.
#pragma once

#include <string_view>

#include "grid/grid_cells.h"
#include "grid/grid_scrolling.h"

namespace quillgate {

class Grid : public GridCells {
 public:
  using GridCells::GridCells;

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

  // --- place and looks: values as the messages of the same name carry them ---
  void SetCursorPos(std::int32_t row, std::int32_t col);
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
  // Changes a colour while the cursor's frame is off.
  void SetUnderFrame(GridColour GridSlot::*colour, GridColour value);
};

}  // namespace quillgate
