// The focus and the selection of a list view's rows. Plain data. Used by its control.
#pragma once

#include <windows.h>

#include <vector>

#include "platform/controls/row_ranges.h"

namespace platform {

struct RowStates {
  RowRanges selected;
  int focused = -1;  // -1: no row

  // LVIS_FOCUSED and LVIS_SELECTED of the row.
  UINT Of(int row) const;
  // Sets those of the two bits that are in the mask. Other rows keep theirs, but only one row has
  // the focus.
  void Set(int row, UINT state, UINT mask);

  // Renumber the rows.
  void InsertRow(int row);
  void RemoveRow(int row);
  // Drops the rows from that number on.
  void Truncate(int count);
  // The states after the rows were sorted; `rowsBefore` holds the previous number of each row.
  RowStates Reordered(const std::vector<int>& rowsBefore) const;
};

}  // namespace platform
