#include "grid/grid_cells.h"

#include <algorithm>
#include <new>
#include <utility>

#include "grid/grid_layout.h"
#include "grid/grid_notifications.h"
#include "grid/grid_scrolling.h"

namespace quillgate {
namespace {

// Added to a text's size when its column or row is enlarged.
constexpr std::int32_t kTextMargin = 5;

struct TextExtent {
  std::int32_t width = 0;  // of the widest line
  std::int32_t lines = 0;
};

TextExtent Measure(std::wstring_view text, GridFont font, GridSystem& system) {
  TextExtent extent;
  for (bool hasMore = true; hasMore; ++extent.lines) {
    const std::size_t end = text.find(L'\n');
    extent.width = std::max(extent.width, system.TextWidth(text.substr(0, end), font));
    hasMore = end != text.npos;
    if (hasMore) text.remove_prefix(end + 1);
  }
  return extent;
}

// Keeps the stored cell when memory runs out.
void StoreOrBeep(CellStore& store, GridCell cell, bool isProtected, std::wstring_view text,
                 GridSystem& system) {
  try {
    store.Store(cell, {isProtected, TypeOf(text), std::wstring(text)});
  } catch (const std::bad_alloc&) {
    system.Beep();
  }
}

}  // namespace

GridCells::GridCells(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {
  const GridSize client = system.ClientSize();
  slot_.clientWidth = client.width;
  slot_.clientHeight = client.height;
}

bool GridCells::Check(GridCell cell) {
  if (IsValid(cell)) return true;
  system_.Notify(GCN_BADCELL, 0);
  return false;
}

bool GridCells::SetProtect(GridCell cell, bool isProtected) {
  if (!Check(cell)) return false;
  if (CellRecord* record = slot_.cellStore.Find(cell))
    record->isProtected = isProtected;
  else
    StoreOrBeep(slot_.cellStore, cell, isProtected, {}, system_);
  // The background depends on the protection.
  system_.Invalidate(CellRect(slot_, cell), false);
  return true;
}

bool GridCells::SetCell(GridCell cell, std::wstring_view text) {
  if (!Check(cell)) return false;
  StoreOrBeep(slot_.cellStore, cell, slot_.defaultProtect == L'P', text, system_);
  system_.Invalidate(CellRect(slot_, cell), false);
  if (slot_.autoRow) IncludeLastRow();
  if (slot_.autoWidth || cell.row == 0) EnlargeFor(cell, text);
  return true;
}

void GridCells::IncludeLastRow() {
  const std::int32_t last = slot_.cellStore.LastRow().value_or(0);
  if (last > slot_.rows || slot_.cellStore.Size() == 0)
    SetSize(static_cast<std::uint32_t>(last), slot_.cols);
}

void GridCells::EnlargeFor(GridCell cell, std::wstring_view text) {
  const bool isHeading = cell.row == 0;
  const GridFont font = isHeading ? slot_.headingFont : slot_.cellFont;
  const TextExtent extent = Measure(text, font, system_);
  const std::int32_t lines = isHeading || !slot_.ellipsis ? extent.lines : 1;
  const std::int32_t height = lines * system_.LineHeight(font) + kTextMargin;
  if (isHeading && height > slot_.headerHeight) SetHeaderHeight(height);
  if (!isHeading && height > slot_.rowHeight) SetRowHeight(height);
  const std::int32_t width = extent.width + kTextMargin;
  if (width > WidthOf(slot_, cell.col)) SetColWidth(static_cast<std::uint32_t>(cell.col), width);
}

std::optional<std::wstring> GridCells::CellText(GridCell cell) {
  if (!Check(cell)) return std::nullopt;
  const CellRecord* record = slot_.cellStore.Find(cell);
  return record == nullptr ? std::wstring() : record->text;
}

bool GridCells::DeleteCell(GridCell cell) {
  if (!Check(cell)) return false;
  slot_.cellStore.Remove(cell);
  system_.Invalidate(CellRect(slot_, cell), false);
  system_.Notify(GCN_EDITEND, PackedCell(slot_.Cursor()));
  return true;
}

std::optional<int> GridCells::TypeNumber(GridCell cell) {
  if (!Check(cell)) return std::nullopt;
  const CellRecord* record = slot_.cellStore.Find(cell);
  if (record == nullptr) return 0;
  switch (record->type) {
    case CellType::kText:
      return 1;
    case CellType::kNumber:
      return 2;
    case CellType::kTrue:
      return 3;
    case CellType::kFalse:
      return 4;
    case CellType::kGraphic:
      return 5;
  }
  return 1;
}

std::optional<bool> GridCells::IsProtected(GridCell cell) {
  if (!Check(cell)) return std::nullopt;
  const CellRecord* record = slot_.cellStore.Find(cell);
  return record != nullptr && record->isProtected;
}

void GridCells::SetDefaultProtect(bool isProtected) {
  slot_.defaultProtect = isProtected ? L'P' : L'U';
}

void GridCells::Clear() {
  slot_.cellStore.Clear();
  slot_.rows = 0;
  slot_.cursorRow = slot_.homeRow = slot_.homeCol = 1;
  system_.InvalidateAll(true);
  GridScrolling(slot_, system_).UpdateBars();
}

void GridCells::SetSize(std::uint32_t rows, std::int32_t cols) {
  constexpr auto kMaxRows = static_cast<std::uint32_t>(kGridMaxRows);
  slot_.rows = static_cast<std::int32_t>(std::min(rows, kMaxRows));
  slot_.cols = std::clamp(cols, 1, kGridMaxCols);
  system_.InvalidateAll(true);
  GridScrolling(slot_, system_).UpdateBars();
}

void GridCells::SetColWidth(std::uint32_t col, std::int32_t width) {
  if (col >= slot_.colWidth.size() || width < 0) return;
  slot_.colWidth[col] = std::min(width, kGridLongest);
  system_.InvalidateAll(false);
  GridScrolling(slot_, system_).UpdateBars();
}

void GridCells::SetHeaderHeight(std::int32_t height) {
  slot_.headerHeight = std::clamp(height, 0, kGridLongest);
  GridScrolling(slot_, system_).UpdateBars();
  RefreshLayout();
  system_.InvalidateAll(false);
}

void GridCells::SetRowHeight(std::int32_t height) {
  slot_.rowHeight = std::clamp(height, 1, kGridLongest);
  GridScrolling scrolling(slot_, system_);
  scrolling.UpdateBars();
  scrolling.BringCursorIntoView();
  RefreshLayout();
  system_.InvalidateAll(false);
}

void GridCells::RefreshLayout() {
  system_.SendSize({slot_.savedWidth, slot_.savedHeight});
  system_.SendSize({slot_.savedWidth, slot_.savedHeight});
}

}  // namespace quillgate
