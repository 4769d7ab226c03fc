// Paints a grid: the title band, the headings and the visible cells, the edit box, and the cursor's
// frame where it was drawn before. Constructed for one WM_PAINT; works on a slot. The window system
// clips to the invalid area.
#pragma once

#include <string>

#include "grid/grid_layout.h"
#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

// " A" to " Z" for columns 1 to 26, then "AA" and so on.
std::wstring ColumnLetters(std::int32_t col);

class GridPainter {
 public:
  GridPainter(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Stores the visible rows and columns in the slot. The parent draws graphic cells and may change
  // anything while doing so.
  void Paint();

 private:
  void PaintTitle();
  void PaintUnused(GridSpan rows, GridSpan cols);
  void PaintColumn(std::int32_t col, GridSpan rows);
  void PaintColumnHeading(std::int32_t col);
  void PaintRowHeading(std::int32_t row, const GridRect& area);
  void PaintCell(GridCell cell, const GridRect& area);
  void PaintContent(const CellRecord& record, const GridRect& area, GridColour textColour);
  void PaintCheckBox(const GridRect& area, bool ticked);
  void PaintText(std::wstring_view text, const GridRect& area, GridTextLook look, GridFont font,
                 GridColour colour);
  void FinishFrame(const GridRect& frameBefore);
  GridColour BackgroundOf(GridCell cell, bool isProtected) const;
  GridColour TextColourOf(GridCell cell) const;
  std::wstring_view StoredText(GridCell cell) const;

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
