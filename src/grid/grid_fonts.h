// The three fonts that all grids share: created for the first grid, deleted with the last. Used on
// the thread of the grids' windows.
#pragma once

#include "grid/grid_slot.h"
#include "handles/gdi_handles.h"

namespace quillgate {

class GridFonts {
 public:
  // Creates the fonts and replaces existing ones.
  void Make();
  void Delete();
  void GiveTo(GridSlot& slot) const;

 private:
  FontHandle cell_;
  FontHandle heading_;
  FontHandle title_;
};

}  // namespace quillgate
