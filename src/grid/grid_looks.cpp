// The grid's title, size and looks, and the place of its cursor.
#include <algorithm>

#include "grid/grid.h"
#include "grid/grid_cursor.h"
#include "grid/grid_layout.h"
#include "grid/grid_scrolling.h"

namespace quillgate {
namespace {

// No screen is so large. Sums of a few lengths stay within their type.
constexpr std::int32_t kLongest = 0x7FFFFFF;

}  // namespace

Grid::Grid(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {
  const GridSize client = system.ClientSize();
  slot_.clientWidth = client.width;
  slot_.clientHeight = client.height;
}

void Grid::SetTitle(std::wstring_view title) {
  slot_.title = title.size() > kGridMaxText ? L"Title too long (300 chars max)" : title;
  std::int32_t height = 0;
  if (!slot_.title.empty()) {
    const auto feeds = std::count(slot_.title.begin(), slot_.title.end(), L'\n');
    const std::int32_t lines = 1 + static_cast<std::int32_t>(feeds);
    // A fifth more than the text needs.
    height = system_.LineHeight(slot_.titleFont) * lines * 6 / 5;
  }
  slot_.titleHeight = height;
  GridScrolling(slot_, system_).UpdateBars();
  system_.InvalidateAll(false);
  RefreshLayout(slot_, system_);
}

void Grid::SetFont(GridFont font) {
  slot_.cellFont = font;
  if (slot_.headingFont == 0) slot_.headingFont = font;
  if (slot_.titleFont == 0) slot_.titleFont = font;
  system_.InvalidateAll(false);
}

void Grid::OnSize(GridSize size) {
  if (slot_.skipNextSize) {
    slot_.skipNextSize = false;
    return;
  }
  slot_.savedWidth = size.width;
  slot_.savedHeight = size.height;
}

void RefreshLayout(const GridSlot& slot, GridSystem& system) {
  system.SendSize({slot.savedWidth, slot.savedHeight});
  system.SendSize({slot.savedWidth, slot.savedHeight});
}

void Grid::SetDefaultProtect(bool isProtected) {
  slot_.defaultProtect = isProtected ? L'P' : L'U';
}

void Grid::Clear() {
  slot_.cellStore.Clear();
  slot_.rows = 0;
  slot_.cursorRow = slot_.homeRow = slot_.homeCol = 1;
  system_.InvalidateAll(true);
  GridScrolling(slot_, system_).UpdateBars();
}

void Grid::SetSize(std::uint32_t rows, std::int32_t cols) {
  constexpr auto kMaxRows = static_cast<std::uint32_t>(kGridMaxRows);
  slot_.rows = static_cast<std::int32_t>(std::min(rows, kMaxRows));
  slot_.cols = std::clamp(cols, 1, kGridMaxCols);
  system_.InvalidateAll(true);
  GridScrolling(slot_, system_).UpdateBars();
}

void Grid::SetCursorPos(std::int32_t row, std::int32_t col) {
  if (row < 1 || row > slot_.rows || col < 1 || col > slot_.cols) return;
  GridCursor(slot_, system_).MoveTo({row, col});
  system_.InvalidateAll(false);
}

void Grid::SetColWidth(std::uint32_t col, std::int32_t width) {
  if (col >= slot_.colWidth.size() || width < 0) return;
  slot_.colWidth[col] = std::min(width, kLongest);
  system_.InvalidateAll(false);
  GridScrolling(slot_, system_).UpdateBars();
}

void Grid::SetHeaderHeight(std::int32_t height) {
  slot_.headerHeight = std::clamp(height, 0, kLongest);
  GridScrolling(slot_, system_).UpdateBars();
  RefreshLayout(slot_, system_);
  system_.InvalidateAll(false);
}

void Grid::SetRowHeight(std::int32_t height) {
  slot_.rowHeight = std::clamp(height, 1, kLongest);
  GridScrolling scrolling(slot_, system_);
  scrolling.UpdateBars();
  scrolling.BringCursorIntoView();
  RefreshLayout(slot_, system_);
  system_.InvalidateAll(false);
}

void Grid::SetTitleHeight(std::int32_t height) {
  slot_.titleHeight = std::clamp(height, 0, kLongest);
  GridScrolling scrolling(slot_, system_);
  scrolling.UpdateBars();
  scrolling.BringCursorIntoView();
  system_.InvalidateAll(false);
}

void Grid::SetCursorColor(GridColour colour) {
  SetUnderFrame(&GridSlot::cursorColor, colour);
}

void Grid::SetGridLineColor(GridColour colour) {
  SetUnderFrame(&GridSlot::gridLineColor, colour);
}

void Grid::SetUnderFrame(GridColour GridSlot::*colour, GridColour value) {
  GridCursor cursor(slot_, system_);
  cursor.RemoveFrame();
  slot_.*colour = value;
  cursor.ShowFrame();
  system_.InvalidateAll(false);
}

void Grid::SetSpareFlag(bool flag) {
  slot_.spareFlag = flag;
  RefreshLayout(slot_, system_);
  system_.InvalidateAll(false);
}

void Grid::SetColour(GridColour GridSlot::*colour, GridColour value) {
  slot_.*colour = value;
  system_.InvalidateAll(false);
}

void Grid::SetFlag(bool GridSlot::*flag, bool value) {
  slot_.*flag = value;
  system_.InvalidateAll(false);
}

void Grid::SetFontOf(GridFont GridSlot::*font, GridFont value) {
  slot_.*font = value;
  system_.InvalidateAll(false);
}

void Grid::NotifyRow() {
  GridCursor(slot_, system_).NotifyRow();
}

void Grid::NotifyCol() {
  GridCursor(slot_, system_).NotifyCol();
}

void Grid::Refresh() {
  system_.InvalidateAll(true);
  system_.PaintNow();
}

}  // namespace quillgate
