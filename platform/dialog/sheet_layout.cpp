#include "platform/dialog/sheet_layout.h"

#include <algorithm>

namespace platform {
namespace {

// In dialog units.
constexpr int kMargin = 5;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
constexpr int kWizardMargin = 7;
// In pixels, as wide as an etched edge.
constexpr int kLine = 2;

void PositionWizardButtons(WizardLayout& layout, const DialogUnits& units) {
  const LONG top = layout.outer.bottom + kLine + units.Y(kWizardMargin);
  const LONG bottom = top + units.Y(kButtonHeight);
  const LONG width = units.X(kButtonWidth);
  const LONG right = layout.sheet.cx - units.X(kWizardMargin);
  layout.cancel = {right - width, top, right, bottom};
  const LONG nextRight = layout.cancel.left - units.X(kWizardMargin);
  layout.next = {nextRight - width, top, nextRight, bottom};
  layout.back = {layout.next.left - width, top, layout.next.left, bottom};
}

}  // namespace

SheetLayout LayOutSheet(SIZE page, const RECT& margins, const DialogUnits& units) {
  SheetLayout layout;
  layout.tabs = {units.X(kMargin), units.Y(kMargin), 0, 0};
  layout.page = {layout.tabs.left + margins.left, layout.tabs.top + margins.top, 0, 0};
  layout.page.right = layout.page.left + page.cx;
  layout.page.bottom = layout.page.top + page.cy;
  layout.tabs.right = layout.page.right + margins.right;
  layout.tabs.bottom = layout.page.bottom + margins.bottom;
  layout.sheet = {layout.tabs.right + units.X(kMargin),
                  layout.tabs.bottom + units.Y(2 * kMargin + kButtonHeight)};
  return layout;
}

int WizardWidth(SIZE inner, SIZE outer, const DialogUnits& units) {
  return static_cast<int>(std::max(inner.cx, outer.cx)) + 2 * units.X(kWizardMargin);
}

WizardLayout LayOutWizard(SIZE inner, SIZE outer, int bandHeight, const DialogUnits& units) {
  const LONG x = units.X(kWizardMargin);
  const LONG y = units.Y(kWizardMargin);
  WizardLayout layout;
  layout.sheet.cx = WizardWidth(inner, outer, units);
  layout.band = {0, 0, layout.sheet.cx, bandHeight};
  const LONG innerTop = bandHeight + kLine + y;
  const LONG bottom = std::max(outer.cy, innerTop + inner.cy + y);
  layout.inner = {x, innerTop, layout.sheet.cx - x, bottom - y};
  layout.outer = {0, 0, layout.sheet.cx, bottom};
  layout.sheet.cy = bottom + kLine + 2 * y + units.Y(kButtonHeight);
  PositionWizardButtons(layout, units);
  return layout;
}

void MoveTo(HWND window, const RECT& bounds) {
  ::MoveWindow(window, bounds.left, bounds.top, bounds.right - bounds.left,
               bounds.bottom - bounds.top, TRUE);
}

std::vector<RECT> LayOutButtons(std::size_t count, SIZE sheet, const DialogUnits& units) {
  const LONG bottom = sheet.cy - units.Y(kMargin);
  LONG right = sheet.cx - units.X(kMargin);
  std::vector<RECT> bounds(count);
  for (std::size_t i = count; i-- > 0;) {
    bounds[i] = {right - units.X(kButtonWidth), bottom - units.Y(kButtonHeight), right, bottom};
    right = bounds[i].left - units.X(kGap);
  }
  return bounds;
}

}  // namespace platform
