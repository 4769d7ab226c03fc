// The layout of a property sheet. Lengths are pixels, relative to the sheet's client area. Any
// thread, except for moving a window.
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

// The layout around a page of that size. `margins` is how much wider and higher, on each side, the
// tab control is than the area that its frame encloses.
SheetLayout LayOutSheet(SIZE page, const RECT& margins, const DialogUnits& units);

// The layout of a wizard. Inner pages lie below the header band, with a margin. Outer pages fill
// the area down to the line above the buttons.
struct WizardLayout {
  SIZE sheet{};
  RECT band{};
  RECT inner{};
  RECT outer{};
  RECT back{};
  RECT next{};  // the Finish button has the same bounds
  RECT cancel{};
};

// The width and the layout around the largest page of either kind.
int WizardWidth(SIZE inner, SIZE outer, const DialogUnits& units);
WizardLayout LayOutWizard(SIZE inner, SIZE outer, int bandHeight, const DialogUnits& units);

// Moves a part of the sheet within it, or the sheet on the screen.
void MoveTo(HWND window, const RECT& bounds);

// The bounds of `count` buttons in a row, the last at the right edge.
std::vector<RECT> LayOutButtons(std::size_t count, SIZE sheet, const DialogUnits& units);

}  // namespace platform
