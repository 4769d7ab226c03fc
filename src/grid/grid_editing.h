// Editing of the cursor's cell: the text so far, the edit box, its caret, and how the edit ends. An
// edit begins with the first character or backspace and ends with Commit or Cancel. Constructed per
// message; works on a slot.
#pragma once

#include <string_view>

#include "grid/grid_slot.h"
#include "grid/grid_system.h"

namespace quillgate {

inline constexpr std::int32_t kGridCaretWidth = 3;

class GridEditing {
 public:
  GridEditing(GridSlot& slot, GridSystem& system) : slot_(slot), system_(system) {}

  // Beeps when the text has its maximum length.
  void Type(wchar_t character);
  // Removes the last character, if any.
  void Backspace();
  // Stores the text in the cursor's cell. Does nothing without an edit.
  void Commit();
  // Leaves the cell unchanged. Does nothing without an edit.
  void Cancel();
  // Draws the edit box and positions the caret. Does nothing without an edit.
  void DrawEditBox();

 private:
  void MoveCaret(GridPoint position);
  void ShowChange();
  void End();
  std::wstring_view ShownText(std::int32_t width);

  GridSlot& slot_;
  GridSystem& system_;
};

}  // namespace quillgate
