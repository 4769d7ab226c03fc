#include "platform/controls/row_states.h"

#include <windows.h>

#include <commctrl.h>

#include <limits>

namespace platform {

UINT RowStates::Of(int row) const {
  const UINT focus = row >= 0 && row == focused ? LVIS_FOCUSED : 0;
  return selected.Contains(row) ? focus | LVIS_SELECTED : focus;
}

void RowStates::Set(int row, UINT state, UINT mask) {
  if ((mask & LVIS_FOCUSED) != 0) {
    if ((state & LVIS_FOCUSED) != 0) {
      focused = row;
    } else if (focused == row) {
      focused = -1;
    }
  }
  if ((mask & LVIS_SELECTED) == 0) return;
  if ((state & LVIS_SELECTED) != 0) {
    selected.Add({row, row});
  } else {
    selected.Remove({row, row});
  }
}

void RowStates::InsertRow(int row) {
  selected.InsertRow(row);
  if (focused >= row) ++focused;
}

void RowStates::RemoveRow(int row) {
  selected.RemoveRow(row);
  if (focused == row) {
    focused = -1;
  } else if (focused > row) {
    --focused;
  }
}

void RowStates::Truncate(int count) {
  selected.Remove({count, std::numeric_limits<int>::max()});
  if (focused >= count) focused = -1;
}

RowStates RowStates::Reordered(const std::vector<int>& rowsBefore) const {
  RowStates after;
  int row = 0;
  for (const int before : rowsBefore) {
    after.Set(row, Of(before), LVIS_FOCUSED | LVIS_SELECTED);
    ++row;
  }
  return after;
}

}  // namespace platform
