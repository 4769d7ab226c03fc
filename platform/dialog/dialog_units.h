// Dialog units: lengths in fractions of the size of a dialog's font, so that a dialog fits its
// texts in any font. For the dialog's thread.
#pragma once

#include <windows.h>

#include "platform/dialog/dialog_template.h"

namespace platform {

struct DialogUnits {
  // Pixels of four horizontal and of eight vertical units. The initial values are those of an 8
  // point font.
  int width = 6;
  int height = 13;

  int X(int units) const;
  int Y(int units) const;
  RECT Pixels(const RECT& units) const;
};

LOGFONTW LogicalFontOf(const DialogFont& font);

// As documented: the average width of the 52 Latin letters and the height of a line. Without a
// desktop to measure on, the base units are scaled with the height of the font.
DialogUnits UnitsOf(const LOGFONTW& font);

}  // namespace platform
