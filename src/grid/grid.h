// One grid control without its window: handles each message of the window. Constructed per message,
// since all state is in the slot. Used by the window procedure, on the window's thread. The parent
// may destroy the control during any notification; the slot is then reset, but still exists.
#pragma once

#include <string_view>

#include "grid/grid_cells.h"
#include "grid/grid_scrolling.h"

namespace quillgate {

class Grid : public GridCells {
 public:
  using GridCells::GridCells;

  // --- window messages ---
  // A title longer than kGridMaxText is replaced by an error text. Also sets the height of the
  // title band.
  void SetTitle(std::wstring_view title);
  // The font of the cells. Headings and title use it too until they have their own.
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
  // Returns the WM_GETDLGCODE reply for the key; 0 means no key.
  std::uint32_t DialogCode(int virtualKey);
  void OnMouseMove(GridPoint point);
  void OnButtonDown(GridPoint point);
  void OnButtonUp(GridPoint point);
  void OnVerticalScroll(GridScroll request, std::int32_t thumbPosition);
  void OnHorizontalScroll(GridScroll request, std::int32_t thumbPosition);

  // --- cursor and appearance: parameters as in the messages of the same name ---
  void SetCursorPos(std::int32_t row, std::int32_t col);
  void SetTitleHeight(std::int32_t height);
  void SetCursorColor(GridColour colour);
  void SetGridLineColor(GridColour colour);
  void SetSpareFlag(bool flag);
  // Setters that only invalidate the window.
  void SetColour(GridColour GridSlot::*colour, GridColour value);
  void SetFlag(bool GridSlot::*flag, bool value);
  void SetFontOf(GridFont GridSlot::*font, GridFont value);
  void NotifyRow();
  void NotifyCol();
  void Refresh();

 private:
  // Changes a colour that the cursor's frame depends on: removes the frame and draws it again.
  void SetUnderFrame(GridColour GridSlot::*colour, GridColour value);
};

}  // namespace quillgate
