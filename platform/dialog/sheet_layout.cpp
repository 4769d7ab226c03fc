#include "platform/dialog/sheet_layout.h"

namespace platform {
namespace {

// In dialog units.
constexpr int kMargin = 5;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;

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

std::vector<RECT> LayOutButtons(std::size_t count, SIZE sheet, const DialogUnits& units) {
  const LONG bottom = sheet.cy - units.Y(kMargin);
  LONG right = sheet.cx - units.X(kMargin);
  std::vector<RECT> places(count);
  for (auto place = places.rbegin(); place != places.rend(); ++place) {
    *place = {right - units.X(kButtonWidth), bottom - units.Y(kButtonHeight), right, bottom};
    right = place->left - units.X(kGap);
  }
  return places;
}

}  // namespace platform
