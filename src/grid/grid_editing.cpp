#include "grid/grid_editing.h"

#include <string>
#include <utility>

#include "grid/grid_cells.h"
#include "grid/grid_layout.h"
#include "grid/grid_notifications.h"

namespace quillgate {
namespace {

constexpr GridColour kBlack = 0;
constexpr GridColour kWhite = 0xFFFFFF;
// Keeps the box inside of the cursor's frame.
constexpr std::int32_t kBoxMargin = 2;
// Distance of the text's end and of the caret from the right edge of the box.
constexpr std::int32_t kTextMargin = 5;
constexpr std::int32_t kCaretMargin = 4;

}  // namespace

void GridEditing::Type(wchar_t character) {
  if (slot_.editText.size() >= kGridMaxText) return system_.Beep();
  slot_.editText += character;
  ShowChange();
}

void GridEditing::Backspace() {
  if (!slot_.editText.empty()) slot_.editText.pop_back();
  ShowChange();
}

void GridEditing::Commit() {
  if (!slot_.editing) return;
  const std::wstring text = std::exchange(slot_.editText, {});
  slot_.editing = false;
  GridCells(slot_, system_).SetCell(slot_.Cursor(), text);
  End();
}

void GridEditing::Cancel() {
  if (!slot_.editing) return;
  slot_.editText.clear();
  slot_.editing = false;
  End();
}

void GridEditing::DrawEditBox() {
  if (!slot_.editing) return;
  const GridRect cell = CellRect(slot_, slot_.Cursor());
  const GridRect box{cell.left + kBoxMargin, cell.top + kBoxMargin, cell.right - kBoxMargin,
                     cell.bottom - kBoxMargin};
  const bool isBeforeHome = slot_.cursorRow < slot_.homeRow || slot_.cursorCol < slot_.homeCol;
  if (isBeforeHome || IsEmpty(box)) return MoveCaret({-kGridCaretWidth, -slot_.caretHeight});
  system_.DrawBox(box, kBlack, kWhite);
  const GridRect area{box.left + 1, box.top, box.right - kTextMargin, box.bottom};
  const std::wstring_view text = ShownText(area.right - area.left);
  if (!text.empty()) system_.PutText(text, area, GridTextLook::kRight, slot_.cellFont, kBlack);
  MoveCaret({box.right - kCaretMargin, (box.top + box.bottom - slot_.caretHeight) / 2});
}

// A thread has one caret: without the focus, it belongs to another window.
void GridEditing::MoveCaret(GridPoint position) {
  if (slot_.hasFocus) system_.SetCaretPosition(position);
}

void GridEditing::ShowChange() {
  const bool begins = !std::exchange(slot_.editing, true);
  if (!begins) system_.HideCaret();
  DrawEditBox();
  system_.ShowCaret();
  // Last: the parent may change anything or destroy the control.
  if (begins) system_.Notify(GCN_EDITBEGIN, PackedCell(slot_.Cursor()));
}

void GridEditing::End() {
  system_.InvalidateAll(false);
  system_.HideCaret();
  system_.Notify(GCN_EDITEND, PackedCell(slot_.Cursor()));
}

// The end of the text, as much as fits: typing appends there.
std::wstring_view GridEditing::ShownText(std::int32_t width) {
  const std::wstring_view text = slot_.editText;
  std::size_t first = 0;
  std::size_t last = text.size();
  while (first < last) {
    const std::size_t middle = (first + last) / 2;
    if (system_.TextWidth(text.substr(middle), slot_.cellFont) <= width) {
      last = middle;
    } else {
      first = middle + 1;
    }
  }
  return text.substr(first);
}

}  // namespace quillgate
