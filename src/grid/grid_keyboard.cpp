#include "grid/grid_keyboard.h"

#include <algorithm>
#include <optional>

#include "grid/grid_cursor.h"
#include "grid/grid_editing.h"
#include "grid/grid_keys.h"
#include "grid/grid_layout.h"
#include "grid/grid_notifications.h"

namespace quillgate {
namespace {

// DLGC_WANTARROWS, DLGC_DEFPUSHBUTTON and DLGC_WANTCHARS.
constexpr std::uint32_t kDialogCode = 0x91;

}  // namespace

void GridKeyboard::OnKey(int virtualKey) {
  const std::uint32_t cursor = PackedCell(slot_.Cursor());
  if (virtualKey == kKeyEscape) return GridEditing(slot_, system_).Cancel();
  if (virtualKey >= kKeyF1 && virtualKey <= kKeyF12)
    return system_.Notify(GCN_FKEY + virtualKey - kKeyF1, cursor);
  if (virtualKey == kKeyDelete) return system_.Notify(GCN_DELETEKEY, cursor);
  if (virtualKey == kKeyTab) return system_.FocusParent();
  if (!Navigate(virtualKey)) OnTyped(virtualKey);
}

std::uint32_t GridKeyboard::DialogCode(int virtualKey) {
  if (virtualKey == kKeyEnter) Enter();
  if (virtualKey == kKeyEscape) {
    if (!slot_.editing) return 0;
    GridEditing(slot_, system_).Cancel();
  }
  return kDialogCode;
}

bool GridKeyboard::Navigate(int virtualKey) {
  switch (virtualKey) {
    case kKeyPageDown:
      MovePage(1);
      return true;
    case kKeyPageUp:
      MovePage(-1);
      return true;
    case kKeyDown:
      MoveRow(1);
      return true;
    case kKeyUp:
      MoveRow(-1);
      return true;
    case kKeyLeft:
      MoveCol(-1);
      return true;
    case kKeyRight:
      MoveCol(1);
      return true;
    default:
      return false;
  }
}

// Commit notifies the parent, which may move the cursor, so the cursor is read after it.
void GridKeyboard::MovePage(std::int32_t direction) {
  GridEditing(slot_, system_).Commit();
  const std::int32_t step = direction * std::max(RowsThatFit(slot_), 0);
  GoToRow(std::clamp(slot_.cursorRow + step, 1, std::max(slot_.rows, 1)));
}

void GridKeyboard::MoveRow(std::int32_t step) {
  GridEditing(slot_, system_).Commit();
  GoToRow(std::clamp(slot_.cursorRow + step, 1, std::max(slot_.rows, 1)));
}

void GridKeyboard::MoveCol(std::int32_t step) {
  GridEditing(slot_, system_).Commit();
  const std::int32_t col = NextShownCol(slot_, slot_.cursorCol, step);
  if (col == slot_.cursorCol) return;
  GridCursor cursor(slot_, system_);
  cursor.MoveTo({slot_.cursorRow, col});
  cursor.NotifyCol();
}

void GridKeyboard::GoToRow(std::int32_t row) {
  if (slot_.rows < 1 || row == slot_.cursorRow) return;
  GridCursor cursor(slot_, system_);
  cursor.MoveTo({row, slot_.cursorCol});
  cursor.NotifyRow();
}

void GridKeyboard::OnTyped(int virtualKey) {
  GridCursor(slot_, system_).NoteProtection();
  const std::optional<wchar_t> character = system_.CharOf(virtualKey);
  if (!character) return;
  if (*character == kCharEnter) return Enter();
  if (slot_.currentProtected || !slot_.editable || slot_.rows < 1) return;
  GridEditing editing(slot_, system_);
  if (*character == kCharBackspace) return editing.Backspace();
  if (*character >= kFirstTyped && *character <= kLastTyped) editing.Type(*character);
}

void GridKeyboard::Enter() {
  MoveRow(1);
}

}  // namespace quillgate
