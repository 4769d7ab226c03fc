// Typing into the cursor's cell: the text so far, the box that shows it, its caret, and what
// becomes of it. An edit begins with the first character or backspace and ends by being committed
// or cancelled. Made for one message; works on a slot.
#pragma once

#include <string_view>

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

inline constexpr std::int32_t kGridCaretWidth = 3;

class GridEditing {
 public:
  GridEditing(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Beeps when the text is as long as it may be.
  void Type(wchar_t character);
  // Removes the last character, if there is one.
  void Backspace();
  // Stores the text in the cursor's cell. Nothing when no edit is under way.
  void Commit();
  // Leaves the cell as it was. Nothing when no edit is under way.
  void Cancel();
  // The box and the caret's place; nothing when no edit is under way.
  void DrawEditBox();

 private:
  void MoveCaret(GridPoint place);
  void ShowChange();
  void End();
  std::wstring_view ShownText(std::int32_t width);

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
