// The state of one grid control: plain data that the control's parts work on. The process has
// twenty slots (slot_table.h); a control finds its slot by its identifier at each message. The
// initial values are those after the window class was registered.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "grid/cell_store.h"
#include "grid/grid_types.h"

namespace quillgate {

enum class GridHover : std::int32_t { kNone = 0, kOrdinary = 1, kColumnBorder = 2 };

inline constexpr std::int32_t kGridColWidth = 50;
// Larger than any screen. Sums of a few lengths do not overflow.
inline constexpr std::int32_t kGridLongest = 0x7FFFFFF;

// Columns 0 to 256; the last one has no width and is hidden until its width is set.
constexpr std::array<std::int32_t, kGridMaxCols + 1> InitialColWidths() {
  std::array<std::int32_t, kGridMaxCols + 1> widths{};
  for (std::int32_t col = 0; col < kGridMaxCols; ++col)
    widths[static_cast<std::size_t>(col)] = kGridColWidth;
  return widths;
}

struct GridSlot {
  std::wstring title;
  std::wstring editText;          // typed during an edit
  wchar_t defaultProtect = L'U';  // of newly stored cells: 'P' protected, 'U' not
  std::uint32_t controlId = 0;    // 0: the slot is free
  CellStore cellStore;
  std::int32_t rows = 100;
  std::int32_t cols = 255;
  std::int32_t clientWidth = 0;  // as of the last message
  std::int32_t clientHeight = 0;
  std::int32_t homeRow = 1;  // the first data row and column shown
  std::int32_t homeCol = 1;
  std::int32_t rowHeight = 21;
  std::int32_t headerHeight = 21;
  std::int32_t firstVisibleRow = 0;  // as of the last painting
  std::int32_t lastVisibleRow = 0;
  std::int32_t firstVisibleCol = 0;
  std::int32_t lastVisibleCol = 0;
  std::int32_t cursorRow = 1;
  std::int32_t cursorCol = 1;
  std::int32_t graphicIndex = 0;  // of the graphic cell being drawn
  std::int32_t titleHeight = 0;
  std::int32_t caretHeight = 0;
  GridColour cursorColor = 0xFFFFFF;   // XORed: white inverts, black shows no cursor
  GridColour protectColor = 0xFFFFFF;  // backgrounds of cells
  GridColour unprotectColor = 0xFFFFFF;
  GridColour headingTextColor = 0;
  GridColour highlightColor = 0x800000;  // background of the cursor's row
  GridColour gridLineColor = 0xDCDCDC;
  GridColour highlightTextColor = 0xFFFFFF;
  bool rowHighlight = true;       // highlight the whole row of the cursor
  bool currentProtected = false;  // state of the cursor's cell, as of the last key
  bool hasFocus = false;
  bool autoRow = true;       // storing below the last row adds rows
  GridRect cursorFrameRect;  // bounds of the frame on the screen
  GridFont cellFont = 0;
  GridFont headingFont = 0;
  GridFont titleFont = 0;
  bool rowNumbers = true;
  bool colLetters = true;
  bool editable = false;
  bool editing = false;
  bool extendLastCol = true;  // the last column reaches to the right edge
  bool spareFlag = true;      // kept for the parent; false while a column is dragged
  bool skipNextSize = false;  // the next WM_SIZE is ignored
  bool ellipsis = true;       // texts are one line that ends in an ellipsis when too long
  bool autoWidth = false;     // storing a text widens its column to fit
  bool resizing = false;      // a column's border is being dragged
  bool colResize = false;     // columns' borders may be dragged
  std::int32_t resizeCol = 0;
  std::int32_t resizeStartWidth = 0;
  std::int32_t resizeStartX = 0;
  GridHover hoverState = GridHover::kNone;
  std::array<std::int32_t, kGridMaxCols + 1> colWidth = InitialColWidths();  // 0: hidden
  bool savedSpareFlag = false;
  std::int32_t savedWidth = 0;  // the size that a layout refresh sends again
  std::int32_t savedHeight = 0;

  GridCell Cursor() const { return {cursorRow, cursorCol}; }
};

// Resets the slot when its control is destroyed. Some values differ from the initial ones, and
// members that are not set here keep their values until the class is registered again. Deliberate,
// see docs/behaviour.md.
void ResetAfterDestruction(GridSlot& slot);

}  // namespace quillgate
