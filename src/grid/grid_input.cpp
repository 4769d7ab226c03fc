// Members of Grid for painting, the focus, the keyboard and the mouse.
#include "grid/grid.h"
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

void Grid::OnFocusGained() {
  slot_.hasFocus = true;
  GridCursor cursor(slot_, system_);
  cursor.ShowFrame();
  cursor.NoteProtection();
  GridScrolling(slot_, system_).BringCursorIntoView();
  slot_.caretHeight = system_.WindowFontAscent();
  system_.Notify(GCN_SETFOCUS, 0);
  system_.CreateCaret({kGridCaretWidth, slot_.caretHeight});
  // An edit goes on where the focus left it.
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

void Grid::OnVerticalScroll(GridScroll request, std::int32_t place) {
  GridScrolling(slot_, system_).OnVertical(request, place);
}

void Grid::OnHorizontalScroll(GridScroll request, std::int32_t place) {
  GridScrolling(slot_, system_).OnHorizontal(request, place);
}

}  // namespace quillgate
