#include "grid/grid.h"

#include <algorithm>

#include "grid/grid_cursor.h"
#include "grid/grid_editing.h"
#include "grid/grid_keyboard.h"
#include "grid/grid_mouse.h"
#include "grid/grid_notifications.h"
#include "grid/grid_painter.h"

namespace quillgate {
namespace {

constexpr GridColour kEnabledHeading = 0;
constexpr GridColour kDisabledHeading = 0x787878;

}  // namespace

void Grid::SetTitle(std::wstring_view title) {
  slot_.title = title.size() > kGridMaxText ? L"Title too long (300 chars max)" : title;
  std::int32_t height = 0;
  if (!slot_.title.empty()) {
    const auto feeds = std::count(slot_.title.begin(), slot_.title.end(), L'\n');
    const std::int32_t lines = 1 + static_cast<std::int32_t>(feeds);
    // 20 % more than the text needs.
    height = system_.LineHeight(slot_.titleFont) * lines * 6 / 5;
  }
  slot_.titleHeight = height;
  GridScrolling(slot_, system_).UpdateBars();
  system_.InvalidateAll(false);
  RefreshLayout();
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

void Grid::SetCursorPos(std::int32_t row, std::int32_t col) {
  if (row < 1 || row > slot_.rows || col < 1 || col > slot_.cols) return;
  GridCursor(slot_, system_).MoveTo({row, col});
  system_.InvalidateAll(false);
}

void Grid::SetTitleHeight(std::int32_t height) {
  slot_.titleHeight = std::clamp(height, 0, kGridLongest);
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
  RefreshLayout();
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

void Grid::OnFocusGained() {
  slot_.hasFocus = true;
  GridCursor cursor(slot_, system_);
  cursor.ShowFrame();
  cursor.NoteProtection();
  GridScrolling(slot_, system_).BringCursorIntoView();
  slot_.caretHeight = system_.WindowFontAscent();
  system_.Notify(GCN_SETFOCUS, 0);
  system_.CreateCaret({kGridCaretWidth, slot_.caretHeight});
  // An edit in progress continues after a loss of the focus.
  if (slot_.editing) system_.ShowCaret();
  system_.InvalidateAll(false);
}

void Grid::OnFocusLost() {
  system_.DestroyCaret();
  GridCursor(slot_, system_).RemoveFrame();
  slot_.hasFocus = false;
  system_.Notify(GCN_KILLFOCUS, 0);
  system_.InvalidateAll(false);
}

void Grid::OnEnabled(bool enabled) {
  slot_.headingTextColor = enabled ? kEnabledHeading : kDisabledHeading;
  system_.InvalidateAll(false);
}

void Grid::Paint() {
  GridPainter(slot_, system_).Paint();
}

void Grid::DrawCursor() {
  GridCursor(slot_, system_).ShowFrame();
}

void Grid::OnKey(int virtualKey) {
  GridKeyboard(slot_, system_).OnKey(virtualKey);
}

std::uint32_t Grid::DialogCode(int virtualKey) {
  return GridKeyboard(slot_, system_).DialogCode(virtualKey);
}

void Grid::OnMouseMove(GridPoint point) {
  GridMouse(slot_, system_).OnMove(point);
}

void Grid::OnButtonDown(GridPoint point) {
  GridMouse(slot_, system_).OnButtonDown(point);
}

void Grid::OnButtonUp(GridPoint) {
  GridMouse(slot_, system_).OnButtonUp();
}

void Grid::OnVerticalScroll(GridScroll request, std::int32_t thumbPosition) {
  GridScrolling(slot_, system_).OnVertical(request, thumbPosition);
}

void Grid::OnHorizontalScroll(GridScroll request, std::int32_t thumbPosition) {
  GridScrolling(slot_, system_).OnHorizontal(request, thumbPosition);
}

}  // namespace quillgate
