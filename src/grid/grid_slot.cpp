#include "grid/grid_slot.h"

#include <algorithm>

namespace quillgate {

void ResetAfterDestruction(GridSlot& slot) {
  constexpr std::int32_t kHeight = 20;
  constexpr std::int32_t kHeadingColWidth = 40;
  slot.controlId = 0;
  slot.cellStore.Clear();
  slot.cellFont = 0;
  slot.defaultProtect = L'U';
  slot.rows = 100;
  slot.cols = 255;
  slot.homeRow = slot.homeCol = 1;
  slot.rowHeight = slot.headerHeight = kHeight;
  slot.rowNumbers = slot.colLetters = slot.rowHighlight = true;
  slot.cursorRow = slot.cursorCol = 1;
  slot.cursorColor = 0xFFFFFF;
  slot.protectColor = 0x808080;
  slot.unprotectColor = 0xFFFFFF;
  slot.colWidth[0] = kHeadingColWidth;
  // Without the hidden last column. Deliberate, see docs/behaviour.md.
  std::fill(slot.colWidth.begin() + 1, slot.colWidth.end() - 1, kGridColWidth);
}

}  // namespace quillgate
