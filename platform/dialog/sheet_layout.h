// Where the parts of a property sheet stand. Lengths are pixels, relative to the sheet's client
// area. Any thread.
#pragma once

#include <windows.h>

#include <vector>

#include "platform/dialog/dialog_units.h"

namespace platform {

struct SheetLayout {
  SIZE sheet{};
  RECT tabs{};
  RECT page{};
};

// Around a page of that size; `margins` is how much wider and higher the tab control is than what
// its frame encloses, on each side.
SheetLayout LayOutSheet(SIZE page, const RECT& margins, const DialogUnits& units);

// That many buttons in a row, the last at the right edge.
std::vector<RECT> LayOutButtons(std::size_t count, SIZE sheet, const DialogUnits& units);

}  // namespace platform
