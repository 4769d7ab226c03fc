#include "grid/grid_fonts.h"

namespace quillgate {
namespace {

FontHandle CreateGridFont(int height, int weight) {
  return FontHandle(::CreateFontW(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                  OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, PROOF_QUALITY,
                                  VARIABLE_PITCH | FF_MODERN, nullptr));
}

GridFont Value(const FontHandle& font) {
  return reinterpret_cast<GridFont>(font.Get());
}

}  // namespace

void GridFonts::Make() {
  cell_ = CreateGridFont(16, FW_THIN);
  heading_ = CreateGridFont(18, FW_HEAVY);
  title_ = CreateGridFont(20, FW_HEAVY);
}

void GridFonts::Delete() {
  cell_.Reset();
  heading_.Reset();
  title_.Reset();
}

void GridFonts::GiveTo(GridSlot& slot) const {
  slot.cellFont = Value(cell_);
  slot.headingFont = Value(heading_);
  slot.titleFont = Value(title_);
}

}  // namespace quillgate
