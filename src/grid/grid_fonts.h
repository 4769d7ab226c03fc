// The three fonts that all grids share: made for the first grid, deleted with the last. Used on the
// thread of the grids' windows.
#pragma once

#include "grid/grid_slot.h"
#include "handles/gdi_handles.h"

namespace quillgate {

class GridFonts {
 public:
  // New ones in place of those that are there.
  void Make();
  void Delete();
  void GiveTo(GridSlot& slot) const;

 private:
  FontHandle cell_;
  FontHandle heading_;
  FontHandle title_;
};

}  // namespace quillgate
