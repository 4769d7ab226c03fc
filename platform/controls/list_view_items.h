// The columns and rows of a list view whose rows it keeps itself. Plain data without notifications.
// Used by its control.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "platform/controls/list_view_peer.h"

namespace platform {

// The state images of check boxes.
inline constexpr UINT kUnchecked = INDEXTOSTATEIMAGEMASK(1);
inline constexpr UINT kChecked = INDEXTOSTATEIMAGEMASK(2);

// Whether the text is LPSTR_TEXTCALLBACK, which is not supported.
inline bool IsTextCallback(const wchar_t* text) {
  return reinterpret_cast<LONG_PTR>(text) == -1;
}

class ListViewItems {
 public:
  struct Item {
    std::vector<std::wstring> texts;
    LPARAM data = 0;
    // The check box: a number within LVIS_STATEIMAGEMASK.
    UINT stateImage = 0;
  };

  int RowCount() const { return static_cast<int>(items_.size()); }
  bool HasRow(int row) const { return row >= 0 && row < RowCount(); }
  // Empty for a row or a column that does not exist.
  std::wstring Text(int row, int column) const;
  // The row must exist.
  Item& Row(int row) { return items_[static_cast<std::size_t>(row)]; }
  const Item& Row(int row) const { return items_[static_cast<std::size_t>(row)]; }
  void SetText(int row, int column, const std::wstring& text);

  // Inserts the row; at the end when there are fewer rows. Returns the index of the new row.
  int InsertRow(int row, Item item);
  void RemoveRow(int row);
  void Clear() { items_.clear(); }
  // A stable sort. Returns the previous index of each row.
  std::vector<int> Sort(PFNLVCOMPARE compare, LPARAM parameter);

  const std::vector<ListViewColumn>& Columns() const { return columns_; }
  bool HasColumn(int column) const;
  // Inserts the column; at the end when there are fewer columns. Moves the texts of the rows with
  // their columns. Returns the index of the new column.
  int InsertColumn(int column, ListViewColumn data);
  // The column must exist.
  ListViewColumn& Column(int column) { return columns_[static_cast<std::size_t>(column)]; }
  const ListViewColumn& Column(int column) const {
    return columns_[static_cast<std::size_t>(column)];
  }

 private:
  std::vector<ListViewColumn> columns_;
  std::vector<Item> items_;
};

}  // namespace platform
