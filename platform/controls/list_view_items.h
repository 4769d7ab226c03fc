// The columns and rows of a list view. Plain data: it tells nobody of its changes. Used by its
// control.
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
  // Of a row that exists.
  Item& Row(int row) { return items_[static_cast<std::size_t>(row)]; }
  const Item& Row(int row) const { return items_[static_cast<std::size_t>(row)]; }
  void SetText(int row, int column, const std::wstring& text);

  // At the end when there are not so many rows. The place it has got.
  int InsertRow(int row, Item item);
  void RemoveRow(int row);
  void Clear() { items_.clear(); }
  // The order of rows that the function does not tell apart stays.
  void Sort(PFNLVCOMPARE compare, LPARAM parameter);

  // The first row after that one (below zero: of all) whose state has every one of the bits; below
  // zero when there is none.
  int NextWith(int after, UINT state) const;
  int CountWith(UINT state) const;

  // At the end when there are not so many columns. The place it has got. The texts of the rows move
  // with their columns.
  int InsertColumn(int column, ListViewColumn data);
  // Of a column that exists.
  ListViewColumn& Column(int column) { return columns_[static_cast<std::size_t>(column)]; }

 private:
  std::vector<ListViewColumn> columns_;
  std::vector<Item> items_;
};

}  // namespace platform
