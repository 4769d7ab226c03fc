#include "grid/grid_painter.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <limits>
#include <utility>

#include "grid/grid_editing.h"

namespace quillgate {
namespace {

constexpr GridColour kBlack = 0;
// The background of the cursor's row while another window has the focus.
constexpr GridColour kIdleHighlight = 0xC8C8C8;
// Between a cell's edges and its content. The cursor's frame does not reach into the content, so a
// parent's drawing does not damage it.
constexpr std::int32_t kPadding = 2;
// In a cell higher than this, a check box has a fixed height and is vertically centred.
constexpr std::int32_t kHighestCheckBox = 24;
constexpr std::int32_t kCheckBoxHeight = 16;

// The decimal number after the "~"; 0 when there is none.
std::int32_t GraphicNumber(const std::wstring& text) {
  const long number = std::wcstol(text.c_str() + 1, nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      number, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

// Not std::to_wstring: it goes through the locale and takes as long as drawing the number.
std::wstring RowNumber(std::int32_t row) {
  const std::string digits = std::to_string(row);
  return {digits.begin(), digits.end()};
}

GridRect Inner(const GridRect& area) {
  return {area.left + kPadding, area.top + kPadding, area.right - kPadding, area.bottom - kPadding};
}

}  // namespace

std::wstring ColumnLetters(std::int32_t col) {
  const std::int32_t first = (col - 1) / 26;
  const std::int32_t second = col % 26 == 0 ? 26 : col % 26;
  const auto letter = [](std::int32_t number) { return static_cast<wchar_t>(L'A' + number - 1); };
  return {first == 0 ? L' ' : letter(first), letter(second)};
}

void GridPainter::Paint() {
  const GridSpan rows = VisibleRows(slot_);
  const GridSpan cols = VisibleCols(slot_);
  slot_.firstVisibleRow = rows.first;
  slot_.lastVisibleRow = rows.last;
  slot_.firstVisibleCol = cols.first;
  slot_.lastVisibleCol = cols.last;
  const GridRect frameBefore = slot_.cursorFrameRect;
  PaintTitle();
  // Before the cells: their lines extend one pixel into the unused area.
  PaintUnused(rows, cols);
  PaintColumn(0, rows);
  for (std::int32_t col = cols.first; col <= cols.last; ++col)
    PaintColumn(col, rows);
  GridEditing(slot_, system_).DrawEditBox();
  FinishFrame(frameBefore);
}

void GridPainter::PaintTitle() {
  if (slot_.titleHeight <= 0) return;
  const GridRect band{0, 0, slot_.clientWidth, slot_.titleHeight};
  system_.DrawEdge(band);
  PaintText(slot_.title, band, GridTextLook::kCentred, slot_.titleFont, slot_.headingTextColor);
}

void GridPainter::PaintUnused(GridSpan rows, GridSpan cols) {
  const std::int32_t lastCol = cols.last < cols.first ? 0 : cols.last;
  const std::int32_t lastRow = rows.last < rows.first ? 0 : rows.last;
  const std::int32_t right = CellRect(slot_, {0, lastCol}).right;
  const std::int32_t bottom = CellRect(slot_, {lastRow, 0}).bottom;
  const GridRect beside{right, slot_.titleHeight, slot_.clientWidth, slot_.clientHeight};
  const GridRect below{0, bottom, right, slot_.clientHeight};
  for (const GridRect& area : {beside, below}) {
    if (!IsEmpty(area)) system_.FillUnused(area);
  }
}

void GridPainter::PaintColumn(std::int32_t col, GridSpan rows) {
  if (WidthOf(slot_, col) <= 0) return;
  PaintColumnHeading(col);
  if (rows.last < rows.first) return;
  GridRect area = CellRect(slot_, {rows.first, col});
  const std::int32_t height = area.bottom - area.top;
  for (std::int32_t row = rows.first; row <= rows.last; ++row) {
    if (col == 0) {
      PaintRowHeading(row, area);
    } else {
      PaintCell({row, col}, area);
    }
    area.top += height;
    area.bottom += height;
  }
}

void GridPainter::PaintColumnHeading(std::int32_t col) {
  const GridRect area = CellRect(slot_, {0, col});
  if (IsEmpty(area)) return;
  system_.DrawEdge(area);
  // The corner cell is blank.
  if (col == 0) return;
  const auto paint = [&](std::wstring_view text) {
    PaintText(text, area, GridTextLook::kCentred, slot_.headingFont, slot_.headingTextColor);
  };
  if (slot_.colLetters) {
    paint(ColumnLetters(col));
  } else {
    paint(StoredText({0, col}));
  }
}

void GridPainter::PaintRowHeading(std::int32_t row, const GridRect& area) {
  system_.DrawEdge(area);
  const auto paint = [&](std::wstring_view text) {
    PaintText(text, area, GridTextLook::kRight, slot_.headingFont, kBlack);
  };
  if (slot_.rowNumbers) {
    paint(RowNumber(row));
  } else {
    paint(StoredText({row, 0}));
  }
}

void GridPainter::PaintCell(GridCell cell, const GridRect& area) {
  const CellRecord* record = std::as_const(slot_.cellStore).Find(cell);
  const bool isProtected = record != nullptr && record->isProtected;
  system_.DrawBox({area.left, area.top, area.right + 1, area.bottom + 1}, slot_.gridLineColor,
                  BackgroundOf(cell, isProtected));
  if (record != nullptr) PaintContent(*record, area, TextColourOf(cell));
}

void GridPainter::PaintContent(const CellRecord& record, const GridRect& area,
                               GridColour textColour) {
  switch (record.type) {
    case CellType::kTrue:
    case CellType::kFalse:
      return PaintCheckBox(Inner(area), record.type == CellType::kTrue);
    case CellType::kGraphic:
      slot_.graphicIndex = GraphicNumber(record.text);
      // The parent may delete the record during this call.
      return system_.NotifyDrawGraphic(Inner(area));
    case CellType::kNumber:
      return PaintText(record.text, area, GridTextLook::kRight, slot_.cellFont, textColour);
    case CellType::kText:
      return PaintText(record.text, area,
                       slot_.ellipsis ? GridTextLook::kLeft : GridTextLook::kWrapped,
                       slot_.cellFont, textColour);
  }
}

void GridPainter::PaintCheckBox(const GridRect& area, bool ticked) {
  GridRect box = area;
  if (box.bottom - box.top > kHighestCheckBox) {
    box.top = (area.top + area.bottom - kCheckBoxHeight) / 2;
    box.bottom = box.top + kCheckBoxHeight;
  }
  if (!IsEmpty(box)) system_.DrawCheckBox(box, ticked);
}

void GridPainter::PaintText(std::wstring_view text, const GridRect& area, GridTextLook look,
                            GridFont font, GridColour colour) {
  const GridRect inner{area.left + kPadding, area.top, area.right - kPadding, area.bottom};
  if (!text.empty() && !IsEmpty(inner)) system_.PutText(text, inner, look, font, colour);
}

// The part of the frame outside of the invalid area is still on the screen; the part inside has
// just been painted over. Drawing is clipped to the invalid area, so this completes the frame.
// GCM_DRAWCURSOR then moves it to the cursor.
void GridPainter::FinishFrame(const GridRect& frameBefore) {
  if (slot_.cursorFrameRect != frameBefore) {
    // The parent moved the cursor while drawing a graphic, and that change of the frame was clipped
    // too.
    system_.InvalidateAll(false);
  } else if (!IsEmpty(frameBefore)) {
    system_.XorFrame(frameBefore, slot_.cursorColor);
  }
  system_.PostDrawCursor();
}

GridColour GridPainter::BackgroundOf(GridCell cell, bool isProtected) const {
  if (slot_.rowHighlight && cell.row == slot_.cursorRow)
    return slot_.hasFocus ? slot_.highlightColor : kIdleHighlight;
  return isProtected ? slot_.protectColor : slot_.unprotectColor;
}

GridColour GridPainter::TextColourOf(GridCell cell) const {
  const bool isHighlighted = slot_.rowHighlight && slot_.hasFocus && cell.row == slot_.cursorRow;
  return isHighlighted ? slot_.highlightTextColor : kBlack;
}

// Valid until the store changes.
std::wstring_view GridPainter::StoredText(GridCell cell) const {
  const CellRecord* record = std::as_const(slot_.cellStore).Find(cell);
  return record == nullptr ? std::wstring_view() : record->text;
}

}  // namespace quillgate
