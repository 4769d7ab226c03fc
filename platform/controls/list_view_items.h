// The columns and rows of a list view. Plain data without notifications. Used by its control.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "platform/controls/list_view_peer.h"

namespace platform {

class ListViewItems final : public ListViewContent {
 public:
  struct Item {
    std::vector<std::wstring> texts;
    LPARAM data = 0;
    UINT state = 0;
  };

  int RowCount() const override { return static_cast<int>(items_.size()); }
  const std::vector<ListViewColumn>& Columns() const override { return columns_; }
  std::wstring Text(int row, int column) const override;
  UINT State(int row) const override;

  bool HasRow(int row) const { return row >= 0 && row < RowCount(); }
  bool HasColumn(int column) const;
  // The row must exist.
  Item& Row(int row) { return items_[static_cast<std::size_t>(row)]; }
  const Item& Row(int row) const { return items_[static_cast<std::size_t>(row)]; }
  void SetText(int row, int column, const std::wstring& text);

  // Inserts the row; at the end when there are fewer rows. Returns the index of the new row.
  int InsertRow(int row, Item item);
  void RemoveRow(int row);
  void Clear() { items_.clear(); }
  // A stable sort.
  void Sort(PFNLVCOMPARE compare, LPARAM parameter);

  // The first row after that one (below zero: of all) whose state has all the bits; -1 when there
  // is none.
  int NextWith(int after, UINT state) const;
  int CountWith(UINT state) const;

  // Inserts the column; at the end when there are fewer columns. Moves the texts of the rows with
  // their columns. Returns the index of the new column.
  int InsertColumn(int column, ListViewColumn data);
  // The column must exist.
  ListViewColumn& Column(int column) { return columns_[static_cast<std::size_t>(column)]; }

 private:
  std::vector<ListViewColumn> columns_;
  std::vector<Item> items_;
};

}  // namespace platform
