// Where the parts of a property sheet stand. Lengths are pixels, relative to the sheet's client
// area. Any thread, but for moving a window.
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

// A wizard: pages with a header stand below its band, with a margin; the others fill the room down
// to the line above the buttons, which is where that room ends.
struct WizardLayout {
  SIZE sheet{};
  RECT band{};
  RECT inner{};
  RECT outer{};
  RECT back{};
  RECT next{};  // the button that finishes stands there, too
  RECT cancel{};
};

// Around the largest page of either kind.
int WizardWidth(SIZE inner, SIZE outer, const DialogUnits& units);
WizardLayout LayOutWizard(SIZE inner, SIZE outer, int bandHeight, const DialogUnits& units);

// Puts a part of the sheet, or the sheet on the screen, at its place.
void MoveTo(HWND window, const RECT& place);

// That many buttons in a row, the last at the right edge.
std::vector<RECT> LayOutButtons(std::size_t count, SIZE sheet, const DialogUnits& units);

}  // namespace platform
